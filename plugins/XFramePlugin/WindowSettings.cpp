#include "WindowSettings.h"

#include "FrameStyle.h"
#include "Skin.h"
#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr QLatin1String SkinSection("MiniSkin");
constexpr QLatin1String SkinKey("Name");

/// The style sheets that the compact window can have.
QStringList skins()
{
    const QDir folder(CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin"));
    QStringList names;
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.qss")}, QDir::Files, QDir::Name))
        names.append(file.completeBaseName());
    names.removeAll(QStringLiteral("default"));
    return names;
}

} // namespace

WindowSettings::WindowSettings(QWidget* parent)
    : Page("IDS_WINDOW_TITLE", "IDS_WINDOW_LEAD", Look::Sign::Plugins, parent)
{
    content()->addWidget(makeSkins());
    content()->addWidget(makeFrame());
    content()->addStretch();
}

QWidget* WindowSettings::makeSkins()
{
    auto* choice = new QComboBox;
    choice->addItems(skins());
    choice->setCurrentText(CommonUtils::GetSettings(SkinSection, SkinKey));
    connect(choice, &QComboBox::textActivated, choice, [](const QString& name) {
        CommonUtils::SetSettings(SkinSection, SkinKey, name);
        applySkin();
    });
    QLabel* const caption = Look::label(QString(), 1.0);
    caption->setBuddy(choice);
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption);
    layout->addWidget(choice);
    layout->addStretch();
    keepTranslated(row, [=] {
        caption->setText(text("IDS_WINDOW_COMPACT_SKIN"));
        choice->setAccessibleName(caption->text());
    });
    return row;
}

QWidget* WindowSettings::makeFrame()
{
    auto* box = new QCheckBox;
    box->setChecked(!FrameStyle::isOwn());
    connect(box, &QCheckBox::toggled, box, &FrameStyle::useDesktopFrame);
    keepTranslated(box, [box] { box->setText(text("IDS_WINDOW_SYSTEM_FRAME")); });
    return box;
}
