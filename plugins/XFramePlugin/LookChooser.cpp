#include "LookChooser.h"

#include "MainWindow.h"
#include "Skin.h"
#include "SkinPreview.h"
#include "common/CommonUtils.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QDir>
#include <QSignalBlocker>

namespace {

constexpr QLatin1String SkinSection("MiniSkin");
constexpr QLatin1String SkinKey("Name");
constexpr QLatin1String UsualSkin("default");
constexpr int SkinRole = Qt::UserRole; ///< name of the compact window's skin; empty for the usual window
constexpr QSize TitleSpace{28, 32};    ///< beside and below the picture

/// The style sheets that the compact window can have.
QStringList compactSkins()
{
    const QDir folder(CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin"));
    QStringList names;
    for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.qss")}, QDir::Files, QDir::Name))
        names.append(file.completeBaseName());
    names.removeAll(UsualSkin);
    return names;
}

/// The same picture when it is selected: a tint would change its colours.
QIcon untinted(const QPixmap& picture)
{
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

} // namespace

LookChooser::LookChooser(MainWindow& window, QWidget* parent)
    : QListWidget(parent)
    , m_window(window)
{
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    setIconSize(SkinPreview::Size);
    setSpacing(Look::Gap);
    setFrameShape(QFrame::NoFrame);
    setFixedHeight(SkinPreview::Size.height() + TitleSpace.height() + 3 * Look::Gap);
    addLook(UsualSkin, false);
    for (const QString& skin : compactSkins())
        addLook(skin, true);
    showCurrent();
    connect(this, &QListWidget::currentRowChanged, this, &LookChooser::apply);
    connect(&window, &MainWindow::compactChanged, this, &LookChooser::showCurrent);
    keepTranslated(this, [this] { translate(); });
}

void LookChooser::addLook(const QString& skin, bool isCompact)
{
    auto* const item = new QListWidgetItem(this);
    item->setIcon(untinted(SkinPreview::picture(skin, isCompact, devicePixelRatioF())));
    item->setData(SkinRole, isCompact ? skin : QString());
    item->setSizeHint(SkinPreview::Size + TitleSpace);
}

void LookChooser::showCurrent()
{
    const QSignalBlocker blocker(this);
    const QString skin =
        CommonUtils::IsMiniMode() ? CommonUtils::GetSettings(SkinSection, SkinKey) : QString();
    for (int row = 0; row < count(); ++row) {
        if (item(row)->data(SkinRole).toString() == skin)
            setCurrentRow(row);
    }
}

void LookChooser::apply()
{
    const QString skin = currentItem() ? currentItem()->data(SkinRole).toString() : QString();
    if (!skin.isEmpty())
        CommonUtils::SetSettings(SkinSection, SkinKey, skin);
    if (CommonUtils::IsMiniMode() == skin.isEmpty())
        m_window.setCompact(!skin.isEmpty());
    else
        applySkin();
}

void LookChooser::translate()
{
    setAccessibleName(text("IDS_WINDOW_LOOK"));
    for (int row = 0; row < count(); ++row) {
        const QString skin = item(row)->data(SkinRole).toString();
        item(row)->setText(skin.isEmpty() ? text("IDS_WINDOW_USUAL") : text("IDS_WINDOW_COMPACT").arg(skin));
    }
}
