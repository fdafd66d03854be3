#include "SkinPreview.h"

#include "Skin.h"
#include "common/CommonUtils.h"
#include "support/Page.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>

namespace {

constexpr int Scale = 2; ///< the sample is larger than its picture, so that its text is small in it
constexpr QSize CompactSize{72, 84};
constexpr int SideBarWidth = 60; ///< in the sample

struct PaletteName
{
    const char* name; ///< in style sheets
    QPalette::ColorRole role;
};

constexpr PaletteName PaletteNames[] = {
    {"palette(base)", QPalette::Base},
    {"palette(window)", QPalette::Window},
    {"palette(window-text)", QPalette::WindowText},
    {"palette(button)", QPalette::Button},
    {"palette(highlight)", QPalette::Highlight},
    {"palette(highlighted-text)", QPalette::HighlightedText},
};

/// For style sheets that leave these to the palette: the style sheet of the application must not show through.
const char* const PaletteColours = "QWidget { background: palette(window); color: palette(window-text); }"
                                   "QLabel, QLabel[quiet=\"true\"] { background: transparent;"
                                   " color: palette(window-text); }"
                                   "Surface, Surface QWidget { background: palette(base); }"
                                   "QLineEdit, QLineEdit[text=\"\"] { color: palette(window-text); }";

/// The style sheet with the colours of the look's palette instead of references to them.
QString styleSheet(const WindowLook& look)
{
    QFile file(CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin/") + look.skin +
               QLatin1String(".qss"));
    QString sheet = QString::fromLatin1(PaletteColours);
    if (file.open(QIODevice::ReadOnly))
        sheet += QString::fromUtf8(file.readAll());
    const QPalette palette = coloursOf(look);
    for (const PaletteName& role : PaletteNames)
        sheet.replace(QLatin1String(role.name), palette.color(role.role).name());
    return sheet;
}

QPushButton* makeButton(bool isPrimary)
{
    auto* button = new QPushButton;
    button->setProperty("primary", isPrimary);
    return button;
}

QWidget* makeHeader()
{
    auto* header = new Surface;
    auto* lines = new QVBoxLayout(header);
    lines->addWidget(Look::label(QStringLiteral("\u2015\u2015\u2015\u2015"), Look::TitleText, QFont::Bold));
    return header;
}

/// What a window consists of, without words.
std::unique_ptr<QWidget> makeSample(bool isCompact)
{
    auto sample = std::make_unique<QWidget>();
    auto* body = new QVBoxLayout;
    body->setContentsMargins(Look::Gap, Look::Gap, Look::Gap, Look::Gap);
    body->addWidget(Look::quietLabel(QStringLiteral("\u2015\u2015\u2015\u2015\u2015")));
    body->addWidget(new QLineEdit);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(makeButton(false));
    buttons->addWidget(makeButton(true));
    body->addLayout(buttons);
    body->addStretch();
    auto* columns = new QHBoxLayout;
    if (!isCompact)
        columns->addSpacing(SideBarWidth);
    columns->addLayout(body);
    auto* rows = new QVBoxLayout(sample.get());
    rows->setContentsMargins(1, 1, 1, 1);
    rows->addWidget(makeHeader());
    rows->addLayout(columns, 1);
    return sample;
}

} // namespace

QPixmap SkinPreview::picture(const WindowLook& look, qreal ratio)
{
    const QSize size = look.isCompact ? CompactSize : Size;
    const std::unique_ptr<QWidget> sample = makeSample(look.isCompact);
    sample->setStyleSheet(styleSheet(look));
    sample->setFixedSize(size * Scale);
    const QPixmap window =
        sample->grab().scaled(size * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPixmap picture(Size * ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QPoint corner((picture.width() - window.width()) / 2, 0);
    painter.drawPixmap(QRect(corner, window.size()), window, window.rect());
    painter.setPen(QColor(128, 128, 128, 160));
    painter.drawRect(QRect(corner, window.size()).adjusted(0, 0, -1, -1));
    painter.end();
    picture.setDevicePixelRatio(ratio);
    return picture;
}
