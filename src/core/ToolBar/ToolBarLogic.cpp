// Builds toolbars and changes their buttons.
#include "ToolBar/ToolBarLogic.h"

#include "ToolBar/SearchLineEdit.h"
#include "common/CommonUtils.h"

#include <QButtonGroup>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr QSize ButtonSize{30, 30};
constexpr QSize SearchEditSize{300, 19};
constexpr int LongestSearch = 48;

QSpacerItem* makeSpacer()
{
    return new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum);
}

QString iconPath(const QString& pluginName, const QString& fileName)
{
    return CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/") + pluginName + QLatin1Char('/') +
           fileName;
}

QString iconPath(const QString& pluginName, const ToolItem& item, bool isEnabled)
{
    return iconPath(pluginName, isEnabled ? item.enabled : item.disabled);
}

/// A picture, in twice the density where the screen has it and there is such a file.
QPixmap loadPicture(const QString& path)
{
    const QFileInfo file(path);
    const QString denser =
        file.path() + QLatin1Char('/') + file.completeBaseName() + QLatin1String("@2x.") + file.suffix();
    if (qApp->devicePixelRatio() > 1 && QFileInfo::exists(denser))
        return QPixmap(denser);
    return QPixmap(path);
}

QToolButton* makeButton(QWidget* parent, const QString& icon)
{
    auto* const button = new QToolButton(parent);
    button->setFixedSize(ButtonSize);
    button->setAutoRaise(true);
    button->setObjectName(QStringLiteral("ToolBar"));
    ToolBarLogic::setIcon(button, true, icon);
    return button;
}

template <typename Layout>
Layout* withoutGaps(Layout* layout)
{
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

QVBoxLayout* makeColumn(QWidget* parent)
{
    auto* const column = withoutGaps(new QVBoxLayout(parent));
    column->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    column->setSizeConstraint(QLayout::SetFixedSize);
    return column;
}

template <typename Action>
void forEachWidget(const QLayout& layout, Action action)
{
    for (int i = 0; i < layout.count(); ++i)
        if (QWidget* const widget = layout.itemAt(i)->widget())
            action(*widget);
}

void setVisible(const QLayout& layout, bool isVisible)
{
    forEachWidget(layout, [isVisible](QWidget& widget) { widget.setVisible(isVisible); });
}

/// Adds a layout to one of any kind; only some kinds have an operation for that.
void append(QLayout& layout, QLayout& place)
{
    place.addItem(&layout);
    layout.setParent(&place);
    forEachWidget(layout, [&place](QWidget& widget) { widget.setParent(place.parentWidget()); });
}

} // namespace

bool ToolBarLogic::CreateToolBar(QString pluginName, QWidget* parent, QList<ToolItem>& items,
                                 QButtonGroup** group, QHBoxLayout** searchLayout,
                                 SearchLineEdit** searchEdit, QLabel** searchIcon)
{
    if (!parent)
        return false;
    auto* const column = makeColumn(parent);
    auto* const row = withoutGaps(new QHBoxLayout);
    auto* const buttons = new QButtonGroup(parent);
    if (group)
        *group = buttons;
    QString searchPath;
    for (ToolItem& item : items) {
        const QString path = iconPath(pluginName, item.enabled);
        item.button = makeButton(parent, path);
        buttons->addButton(item.button, item.id);
        row->addWidget(item.button);
        if (item.isSearch)
            searchPath = path;
    }
    row->addSpacerItem(makeSpacer());
    column->addLayout(row);
    if (!searchLayout || !searchEdit || !searchIcon)
        return true;
    *searchLayout = nullptr;
    *searchEdit = nullptr;
    return createSearchBox(searchLayout, searchEdit, searchPath, searchIcon);
}

bool ToolBarLogic::createSearchBox(QHBoxLayout** layout, SearchLineEdit** edit, QString iconPath,
                                   QLabel** icon)
{
    if (!layout || !edit || !icon)
        return false;
    *layout = new QHBoxLayout;
    *edit = new SearchLineEdit(nullptr);
    *icon = new QLabel;
    (*layout)->setSpacing(1);
    (*layout)->setContentsMargins(0, 0, 0, 3);
    (*icon)->setPixmap(loadPicture(iconPath));
    (*edit)->setAcceptDrops(false);
    (*edit)->clear();
    (*edit)->setFocus();
    (*edit)->setFixedSize(SearchEditSize);
    (*edit)->setMaxLength(LongestSearch);
    (*layout)->addWidget(*icon);
    (*layout)->addWidget(*edit);
    (*layout)->addSpacerItem(makeSpacer());
    return true;
}

void ToolBarLogic::ShowHideSearchBox(QWidget* widget, QHBoxLayout* layout, SearchLineEdit* edit, bool show)
{
    QLayout* const place = widget ? widget->layout() : nullptr;
    if (!place || !layout || !edit)
        return;
    edit->setEnabled(show);
    if (!show) {
        place->removeItem(layout);
        setVisible(*layout, false); // otherwise they would stay visible
        return;
    }
    if (!layout->parent())
        append(*layout, *place);
    setVisible(*layout, true);
    edit->clear();
    edit->setFocus();
}

void ToolBarLogic::EnableDisableItem(QString pluginName, QList<ToolItem>& items, int id, bool enable)
{
    const auto item =
        std::find_if(items.begin(), items.end(), [id](const ToolItem& entry) { return entry.id == id; });
    if (item == items.end() || !item->button)
        return;
    setIcon(item->button, enable, iconPath(pluginName, *item, enable));
    item->button->setEnabled(enable);
}

void ToolBarLogic::setIcon(QToolButton* button, bool enabled, QString path)
{
    setMirrorIcon(button, enabled, std::move(path), QGuiApplication::layoutDirection() == Qt::RightToLeft);
}

void ToolBarLogic::setMirrorIcon(QToolButton* button, bool enabled, QString path, bool mirror)
{
    if (!button)
        return;
    QPixmap picture = loadPicture(path);
    const QSize size = picture.size() / picture.devicePixelRatio();
    if (mirror)
        picture = picture.transformed(QTransform::fromScale(-1, 1));
    QIcon icon;
    icon.addPixmap(picture, enabled ? QIcon::Active : QIcon::Disabled, QIcon::Off);
    button->setIcon(icon);
    button->setIconSize(size);
}

void ToolBarLogic::ChangeToolBarIconDirection(QString pluginName, QList<ToolItem>& items, bool mirror,
                                              QLabel** searchIcon)
{
    for (const ToolItem& item : qAsConst(items)) {
        if (!item.button)
            continue;
        setMirrorIcon(item.button, true, iconPath(pluginName, item, item.button->isEnabled()), mirror);
        if (item.isSearch && searchIcon && *searchIcon)
            (*searchIcon)->setPixmap(item.button->icon().pixmap(item.button->iconSize()));
    }
}

void ToolBarLogic::DestroyToolButtonGroup(QList<ToolItem>& items, QButtonGroup** group)
{
    for (ToolItem& item : items) {
        delete item.button;
        item.button = nullptr;
    }
    if (!group)
        return;
    delete *group;
    *group = nullptr;
}
