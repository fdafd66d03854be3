#include "support/Text.h"

#include "Change/Change.h"

#include <QEvent>
#include <QWidget>

namespace {

/// A widget passes QEvent::LanguageChange on to all its children, such as this one.
class Translator : public QObject
{
public:
    Translator(QWidget* parent, std::function<void()> setTexts)
        : QObject(parent)
        , m_setTexts(std::move(setTexts))
    {
    }

    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::LanguageChange)
            m_setTexts();
        return QObject::event(event);
    }

private:
    std::function<void()> m_setTexts;
};

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
    new Translator(widget, std::move(setTexts));
}
