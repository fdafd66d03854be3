#include "LookChooser.h"

#include "MainWindow.h"
#include "SkinPreview.h"
#include "common/CommonUtils.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>

namespace {

constexpr QSize Space{28, 16}; ///< beside the picture, and around it and its name

/// The same picture when it is selected: a tint would change its colours.
QIcon untinted(const QPixmap& picture)
{
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

/// The name of a skin, which operators may have added, as the user sees it.
QString shownSkin(const QString& skin)
{
    const QString name = text(("IDS_SKIN_" + skin.toUpper().toLatin1()).constData());
    return name.isEmpty() ? skin : name;
}

} // namespace

LookChooser::LookChooser(MainWindow& window, QWidget* parent)
    : QListWidget(parent)
    , m_window(window)
    , m_looks(allLooks())
{
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    setIconSize(SkinPreview::Size);
    setSpacing(Look::Gap);
    setWordWrap(true);
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // else its width is reserved
    for (const WindowLook& look : m_looks)
        addPicture(look);
    showCurrent();
    connect(this, &QListWidget::currentRowChanged, this, &LookChooser::apply);
    connect(&window, &MainWindow::compactChanged, this, &LookChooser::showCurrent);
    keepTranslated(this, [this] { translate(); });
}

void LookChooser::addPicture(const WindowLook& look)
{
    auto* const item = new QListWidgetItem(this);
    item->setTextAlignment(Qt::AlignHCenter | Qt::AlignTop);
    item->setIcon(untinted(SkinPreview::picture(look, devicePixelRatioF())));
}

/// As many rows as the width needs.
void LookChooser::doItemsLayout()
{
    QListWidget::doItemsLayout();
    setFixedHeight(contentsSize().height());
}

void LookChooser::showCurrent()
{
    const QSignalBlocker blocker(this);
    setCurrentRow(m_looks.indexOf(currentLook()));
}

void LookChooser::apply()
{
    if (currentRow() < 0)
        return;
    const WindowLook look = m_looks.at(currentRow());
    storeLook(look);
    if (CommonUtils::IsMiniMode() == look.isCompact)
        applySkin();
    else
        m_window.setCompact(look.isCompact);
}

void LookChooser::translate()
{
    setAccessibleName(text("IDS_WINDOW_LOOK"));
    for (int row = 0; row < count(); ++row) {
        const WindowLook& look = m_looks.at(row);
        const char* const usual = look.isDark ? "IDS_WINDOW_DARK" : "IDS_WINDOW_USUAL";
        item(row)->setText(look.isCompact ? text("IDS_WINDOW_COMPACT").arg(shownSkin(look.skin))
                                          : text(usual));
    }
    resizeItems();
}

/// All are as high as the longest name needs.
void LookChooser::resizeItems()
{
    QSize size = SkinPreview::Size + Space;
    const int pictureHeight = size.height();
    const int margins = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    const QRect line(0, 0, size.width() - margins, 0);
    for (int row = 0; row < count(); ++row) {
        const QRect name = fontMetrics().boundingRect(line, Qt::TextWordWrap, item(row)->text());
        size.setHeight(std::max(size.height(), pictureHeight + name.height()));
    }
    for (int row = 0; row < count(); ++row)
        item(row)->setSizeHint(size);
}
