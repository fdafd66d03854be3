#pragma once

#include <QtGlobal>

#include <memory>

class QString;
class QTranslator;

/// Brings everything that does not come from language files in line with the current language: the direction
/// in which windows are laid out, and Qt's own texts, such as those of context menus.
///
/// Create it before the first window: the windows then need not change afterwards.
class LanguageSwitch
{
public:
    /// For the language in which the application has started.
    LanguageSwitch();
    ~LanguageSwitch();

    /// Makes a language current. All widgets receive QEvent::LanguageChange before they are painted again;
    /// they are mirrored only if the direction is a different one.
    void use(const QString& code);

private:
    Q_DISABLE_COPY_MOVE(LanguageSwitch)

    void follow();

    std::unique_ptr<QTranslator> m_qtTexts;
};
