#pragma once

#include <QtGlobal>

#include <memory>

class QString;
class QTranslator;

/// Adapts everything that does not come from language files to the current language: the direction in which
/// windows are laid out, and Qt's own strings, for example in context menus.
///
/// Create it before the first window, so that no window has to be mirrored afterwards.
class LanguageSwitch
{
public:
    /// For the language in which the application has started.
    LanguageSwitch();
    ~LanguageSwitch();

    /// Makes a language current. All widgets receive QEvent::LanguageChange before they are painted again;
    /// they are mirrored only if the direction changes.
    void use(const QString& code);

private:
    Q_DISABLE_COPY_MOVE(LanguageSwitch)

    void follow();

    std::unique_ptr<QTranslator> m_qtStrings;
};
