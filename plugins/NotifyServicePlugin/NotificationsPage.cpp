#include "NotificationsPage.h"

#include "EventSettings.h"
#include "SoundsPanel.h"
#include "support/Text.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace {

/// @param event as for EventSettings::isShown()
QCheckBox* makeSwitch(const QString& event, const char* caption)
{
    auto* box = new QCheckBox;
    box->setObjectName(event);
    box->setChecked(EventSettings::isShown(event));
    QObject::connect(box, &QCheckBox::toggled, box,
                     [event](bool isShown) { EventSettings::setShown(event, isShown); });
    keepTranslated(box, [=] { box->setText(text(caption)); });
    return box;
}

void addSwitches(QVBoxLayout* column)
{
    auto* messages = makeSwitch(EventSettings::key(Event::Message), "IDS_NOTIFY_MESSAGE");
    auto* texts = makeSwitch(EventSettings::MessageText, "IDS_NOTIFY_TEXT");
    auto* indented = new QHBoxLayout;
    indented->addSpacing(Look::Gap * 3);
    indented->addWidget(texts, 1);
    column->addWidget(messages);
    column->addLayout(indented);
    column->addWidget(makeSwitch(EventSettings::DataLimit, "IDS_NOTIFY_LIMIT"));
    column->addWidget(makeSwitch(EventSettings::key(Event::ConnectionLost), "IDS_NOTIFY_LOST"));
    texts->setEnabled(messages->isChecked());
    QObject::connect(messages, &QCheckBox::toggled, texts, &QWidget::setEnabled);
}

QWidget* makeMuteSwitch()
{
    auto* mute = new QCheckBox;
    mute->setChecked(EventSettings::isMuted());
    QObject::connect(mute, &QCheckBox::toggled, mute, &EventSettings::setMuted);
    keepTranslated(mute, [mute] { mute->setText(text("IDS_NOTIFY_MUTE")); });
    return mute;
}

} // namespace

NotificationsPage::NotificationsPage(EventSounds& sounds, QWidget* parent)
    : Page("IDS_NOTIFY_TITLE", "IDS_NOTIFY_LEAD", Look::Sign::Message, parent)
{
    auto* desktop = new Surface;
    auto* soundsOfEvents = new Surface;
    addSwitches(desktop->makeColumn("IDS_NOTIFY_DESKTOP"));
    soundsOfEvents->makeColumn("IDS_NOTIFY_SOUNDS", makeMuteSwitch())->addWidget(new SoundsPanel(sounds));
    content()->addWidget(desktop);
    content()->addWidget(soundsOfEvents);
    content()->addStretch();
}
