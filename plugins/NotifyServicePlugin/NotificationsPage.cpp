#include "NotificationsPage.h"

#include "EventSettings.h"
#include "SoundsPanel.h"
#include "support/AccessibleRole.h"
#include "support/Text.h"

#include <QCheckBox>
#include <QLabel>
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
    addSwitches(addPanel("IDS_NOTIFY_DESKTOP", nullptr));
    addPanel("IDS_NOTIFY_SOUNDS", makeMuteSwitch())->addWidget(new SoundsPanel(sounds));
    content()->addStretch();
}

QVBoxLayout* NotificationsPage::addPanel(const char* title, QWidget* corner)
{
    auto* panel = new Surface;
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    column->setSpacing(Look::Gap);
    QLabel* const heading = Look::label(QString(), 1.15, QFont::DemiBold);
    setAccessibleRole(heading, QAccessible::Heading);
    keepTranslated(heading, [=] { heading->setText(text(title)); });
    auto* line = new QHBoxLayout;
    line->addWidget(heading, 1);
    if (corner)
        line->addWidget(corner);
    column->addLayout(line);
    content()->addWidget(panel);
    return column;
}
