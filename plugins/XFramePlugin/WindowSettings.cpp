#include "WindowSettings.h"

#include "FrameStyle.h"
#include "LookChooser.h"
#include "support/Text.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace {

QWidget* makeFrame()
{
    auto* box = new QCheckBox;
    box->setChecked(!FrameStyle::isOwn());
    QObject::connect(box, &QCheckBox::toggled, box, &FrameStyle::useDesktopFrame);
    keepTranslated(box, [box] { box->setText(text("IDS_WINDOW_SYSTEM_FRAME")); });
    return box;
}

QWidget* makeLooks(MainWindow& window)
{
    auto* panel = new Surface;
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(1, Look::Gap, 1, Look::Gap);
    layout->addWidget(new LookChooser(window));
    return panel;
}

} // namespace

WindowSettings::WindowSettings(MainWindow& window, QWidget* parent)
    : Page("IDS_WINDOW_TITLE", "IDS_WINDOW_LEAD", Look::Sign::Plugins, parent)
{
    content()->addWidget(makeLooks(window));
    content()->addWidget(makeFrame());
    content()->addStretch();
}
