// The style sheets of the skins: whether text can be read, from contrasts between their colours and between those that
// plugins derive from them, and whether distances are on the grid.
#include "../support/DataTable.h"
#include "../support/TestFiles.h"
#include "Contrast.h"
#include "DarkColours.h"
#include "support/Look.h"

#include <QApplication>
#include <QLabel>
#include <QMap>
#include <QMetaEnum>
#include <QPalette>
#include <QRegularExpression>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOptionViewItem>

#include <memory>

namespace {

using Rule = QMap<QString, QString>; ///< values by property
using Rules = QVector<QPair<QString, Rule>>;

Rules readRules(const QString& name)
{
    const QByteArray content = contentOf(QCoreApplication::applicationDirPath() + "/skin/" + name);
    const QString text = QString::fromUtf8(content).remove(QRegularExpression(R"((?s)/\*.*?\*/)"));
    Rules rules;
    auto blocks = QRegularExpression(R"(([^{}]+)\{([^}]*)\})").globalMatch(text);
    while (blocks.hasNext()) {
        const QRegularExpressionMatch block = blocks.next();
        Rule rule;
        for (const QString& declaration : block.captured(2).split(';'))
            rule[declaration.section(':', 0, 0).trimmed()] = declaration.section(':', 1).trimmed();
        rules.append({block.captured(1).simplified(), rule});
    }
    return rules;
}

QString valueOf(const Rules& rules, const QString& selector, const QString& property)
{
    for (const auto& [name, rule] : rules)
        if (name.split(", ").contains(selector) && rule.contains(property))
            return rule[property];
    return {};
}

QColor blend(const QColor& over, const QColor& under)
{
    return Look::mixed(under, over, over.alphaF());
}

/// Colours as of a light and of a dark desktop, the same on every machine.
QPalette desktop(bool isDark)
{
    if (!isDark)
        return std::unique_ptr<QStyle>(QStyleFactory::create("Fusion"))->standardPalette();
    QPalette palette(QColor(0x31, 0x36, 0x3b), QColor(0x2a, 0x2e, 0x32));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
    palette.setColor(QPalette::ToolTipBase, QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::ToolTipText, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

/// The role "tool-tip-base" of style sheets is ToolTipBase.
QPalette::ColorRole roleOf(const QString& name)
{
    QString key;
    for (const QString& word : name.split('-'))
        key += word.at(0).toUpper() + word.mid(1);
    return QPalette::ColorRole(QMetaEnum::fromType<QPalette::ColorRole>().keyToValue(key.toLatin1()));
}

/// A value of a style sheet. No value means transparent.
QColor colorOf(const QString& value, const QPalette& palette)
{
    const QStringList parts = value.split(QRegularExpression("[(),\\s]+"), Qt::SkipEmptyParts);
    if (parts.value(0) == "palette")
        return palette.color(roleOf(parts.value(1)));
    if (parts.value(0) == "rgba")
        return {parts[1].toInt(), parts[2].toInt(), parts[3].toInt(), parts[4].toInt()};
    return value.isEmpty() ? QColor(Qt::transparent) : QColor(value);
}

/// The colours that a skin gives to the widgets of plugins.
QPalette paletteOf(const Rules& rules, QPalette palette)
{
    const auto set = [&](QPalette::ColorRole role, const char* selector, const char* property) {
        const QString value = valueOf(rules, selector, property);
        if (!value.isEmpty())
            palette.setColor(role, colorOf(value, palette));
    };
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
        set(role, "QWidget", "color");
    set(QPalette::Window, "QWidget", "background");
    set(QPalette::Base, "Surface", "background");
    set(QPalette::Button, "QPushButton", "background");
    set(QPalette::Highlight, "QWidget", "selection-background-color");
    set(QPalette::HighlightedText, "QWidget", "selection-color");
    return palette;
}

/// What text can stand on, with something over it.
QVector<QColor> surfaces(const QPalette& palette, const QColor& over = Qt::transparent)
{
    return {blend(over, palette.color(QPalette::Window)), blend(over, palette.color(QPalette::Base)),
            blend(over, palette.color(QPalette::Button))};
}

/// The smallest contrast of a colour with backgrounds.
double smallest(const QColor& color, const QVector<QColor>& backgrounds)
{
    double contrast = 21;
    for (const QColor& background : backgrounds)
        contrast = std::min(contrast, Contrast::of(blend(color, background), background));
    return contrast;
}

} // namespace

class TestSkins : public QObject
{
    Q_OBJECT

private slots:
    void contrast_data();
    void contrast();
    void derivedColours_data() { contrast_data(); }
    void derivedColours();
    void distances_data() { contrast_data(); }
    void distances();

private:
    static void check(const QString& what, double contrast, double required = Contrast::ForText)
    {
        QVERIFY2(contrast >= required, qPrintable(QString("%1: %2").arg(what).arg(contrast, 0, 'f', 2)));
    }
};

void TestSkins::contrast_data()
{
    const auto row = dataTable<QString, QPalette>("file", "colours");
    row("light desktop", "default.qss", desktop(false));
    row("dark desktop", "default.qss", desktop(true));
    row("dark", "default.qss", darkColours());
    row("blue", "Blue.qss", desktop(false));
    row("graphite", "Graphite.qss", desktop(false));
}

/// Text on the background of its rule, on whatever shows through it.
void TestSkins::contrast()
{
    QFETCH(QString, file);
    QFETCH(QPalette, colours);
    const Rules rules = readRules(file);
    QVERIFY(rules.size() > 20);
    const QPalette palette = paletteOf(rules, colours);
    for (const auto& [selector, rule] : rules) {
        const bool isDesktops = rule["color"] == "palette(highlighted-text)"; // and so is its background
        if (selector.contains("QScrollBar") || isDesktops)
            continue;
        const QVector<QColor> backgrounds = surfaces(palette, colorOf(rule["background"], palette));
        const QColor text =
            rule.contains("color") ? colorOf(rule["color"], palette) : palette.color(QPalette::WindowText);
        const bool isDisabled = selector.contains(":disabled");
        check(selector, smallest(text, backgrounds), isDisabled ? Contrast::ForOthers : Contrast::ForText);
        const QString frame = rule.value("border-color", rule["border"].section("solid ", 1));
        const bool isBox = selector.contains("::indicator") && rule.contains("width"); // if it has no mark
        if ((selector.contains(":focus") || isBox) && !frame.isEmpty())
            check(selector + " frame", smallest(colorOf(frame, palette), backgrounds), Contrast::ForOthers);
    }
    if (colours == darkColours() || !valueOf(rules, "QWidget", "selection-color").isEmpty())
        check("selection",
              Contrast::of(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)));
}

/// Quiet text, links and coloured states, also on the entry of a list that is chosen.
void TestSkins::derivedColours()
{
    QFETCH(QString, file);
    QFETCH(QPalette, colours);
    const QPalette palette = paletteOf(readRules(file), colours);
    const std::unique_ptr<QLabel> error(Look::errorLabel()); // in the colours before
    QApplication::setPalette(palette);
    check("error", smallest(error->palette().color(QPalette::WindowText), surfaces(palette)));
    QStyleOptionViewItem chosen;
    chosen.palette = palette;
    chosen.state = QStyle::State_Selected;
    const QVector<QColor> entries{Look::entryBackground(chosen, QPalette::Base),
                                  Look::entryBackground(chosen, QPalette::Window)};
    check("chosen entry", smallest(palette.color(QPalette::Text), entries));
    const QColor quiet = Look::toneColor(Look::Tone::Quiet, palette);
    check("quiet text", smallest(quiet, surfaces(palette)));
    check("quiet text of a chosen entry", smallest(quiet, {entries.first()}));
    for (const auto role : {QPalette::Link, QPalette::LinkVisited, QPalette::PlaceholderText}) {
        if (colours != darkColours())
            continue; // the desktop's
        check("link", smallest(palette.color(role), surfaces(palette)));
        check("disabled", smallest(palette.color(QPalette::Disabled, role), surfaces(palette)),
              Contrast::ForOthers);
    }
    for (const auto tone : {Look::Tone::Good, Look::Tone::Info, Look::Tone::Quiet, Look::Tone::Bad}) {
        const QColor color = Look::toneColor(tone, palette);
        const QColor badge = Look::mixed(palette.color(QPalette::Base), color, 0.14);
        check(QString("tone %1").arg(int(tone)), smallest(color, {badge, palette.color(QPalette::Base)}));
    }
}

/// One grid: thin lines or multiples of 4 pixels. Sizes of text come from the code.
void TestSkins::distances()
{
    QFETCH(QString, file);
    static const QRegularExpression pixels(R"((\d+)px)");
    for (const auto& [selector, rule] : readRules(file)) {
        QVERIFY2(!rule.contains("font-size"), qPrintable(selector));
        if (selector.contains(":focus"))
            continue; // a frame takes its second pixel from the padding
        for (const QString& property : rule.keys()) {
            auto numbers = pixels.globalMatch(rule[property]);
            while (numbers.hasNext() && !property.contains("radius")) {
                const int number = numbers.next().captured(1).toInt();
                QVERIFY2(number <= 2 || number % 4 == 0, qPrintable(selector + ' ' + property));
            }
        }
    }
}

QTEST_MAIN(TestSkins)

#include "tst_skins.moc"
