#pragma once

#include <QTranslator>
#include <QVector>

/// A language that the application can be shown in.
struct Language
{
    QString code; ///< language and country code such as "en-us"
    QString name; ///< as those call it who speak it
};

/// The languages that the main window has a language file for, sorted by name.
QVector<Language> availableLanguages();

/// A language's own name; the code when the system does not know it.
QString nameOfLanguage(const QString& code);

/// Qt's own texts, and the direction of the language, which Qt asks its translators for.
class QtTranslator : public QTranslator
{
    Q_OBJECT

public:
    /// Reads the texts if they are installed; without them Qt speaks English.
    void load(const QString& code);

    Qt::LayoutDirection direction() const { return m_direction; }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int count) const override;

private:
    Qt::LayoutDirection m_direction = Qt::LeftToRight;
};

/// Brings what does not come from language files in line with the current language: the direction in which
/// windows are laid out, and the texts of Qt itself where its translations are installed.
class LanguageSwitch
{
public:
    /// For the language that the application has started in.
    LanguageSwitch();

    /// Makes a language current. All widgets are sent QEvent::LanguageChange before they are painted again.
    void use(const QString& code);

private:
    Q_DISABLE_COPY_MOVE(LanguageSwitch)

    void follow();

    QtTranslator m_qtTexts;
};
