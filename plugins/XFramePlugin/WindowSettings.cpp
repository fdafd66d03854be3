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

} // namespace

WindowSettings::WindowSettings(MainWindow& window, QWidget* parent)
    : Page("IDS_WINDOW_TITLE", "IDS_WINDOW_LEAD", Look::Sign::Plugins, parent)
{
    content()->addWidget(new LookChooser(window));
    content()->addWidget(makeFrame());
    content()->addStretch();
}
