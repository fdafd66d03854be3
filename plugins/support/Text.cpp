#include "support/Text.h"

#include "Change/Change.h"

#include <QEvent>
#include <QWidget>

#include <list>

namespace {

/// Calls what sets the strings of a widget, in the order in which it was added. It filters the events of the widget, because
/// that happens before the widget passes the event on to a copied list of its children: the functions may delete some.
class Translator : public QObject
{
public:
    explicit Translator(QWidget* widget)
        : QObject(widget)
    {
        widget->installEventFilter(this);
    }

    void add(std::function<void()> setTexts) { m_setTexts.push_back(std::move(setTexts)); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::LanguageChange) {
            for (const std::function<void()>& setTexts : m_setTexts)
                setTexts();
        }
        return false;
    }

private:
    std::list<std::function<void()>> m_setTexts;
};

Translator* translatorOf(QWidget* widget)
{
    for (QObject* const child : widget->children()) {
        if (auto* const translator = dynamic_cast<Translator*>(child))
            return translator;
    }
    return new Translator(widget);
}

} // namespace

QString text(const char* id)
{
    return Change::tr(QString::fromLatin1(id), thisPlugin());
}

QString sharedText(const char* id)
{
    return Change::tr(QString::fromLatin1(id), SharedTexts);
}

Caption caption(const char* id)
{
    Caption parts;
    text(id); // loads the language file if necessary, which the other form does not
    Change::tr(QString::fromLatin1(id), thisPlugin(), parts.text, parts.shortcut);
    parts.text = parts.text.trimmed(); // there is a space before the shortcut
    return parts;
}

void keepTranslated(QWidget* widget, std::function<void()> setTexts)
{
    setTexts();
    translatorOf(widget)->add(std::move(setTexts));
}
