#include "SoundsPanel.h"

#include "EventSounds.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace {

struct Name
{
    const char* sound;
    const char* id; ///< of the plugin's string
};

/// The sounds that are part of the application. Others are shown with their file names.
constexpr Name Names[] = {
    {"message.wav", "IDS_NOTIFY_CHIME"},
    {"call.wav", "IDS_NOTIFY_RING"},
    {"connection-lost.wav", "IDS_NOTIFY_FALLING"},
};

const char* captionId(Event event)
{
    switch (event) {
    case Event::Message:
        return "IDS_NOTIFY_MESSAGE";
    case Event::Call:
        return "IDS_NOTIFY_CALL";
    default:
        return "IDS_NOTIFY_LOST";
    }
}

QString nameOf(const QString& sound)
{
    if (sound == EventSettings::NoSound)
        return text("IDS_NOTIFY_NONE");
    for (const Name& name : Names) {
        if (sound == QLatin1String(name.sound))
            return text(name.id);
    }
    return QFileInfo(sound).completeBaseName();
}

/// Fills the list again, in the current language.
void fill(QComboBox* list, const QString& chosen)
{
    const QSignalBlocker blocker(list);
    QStringList sounds = EventSettings::installedSounds();
    sounds.prepend(EventSettings::NoSound);
    if (!sounds.contains(chosen))
        sounds.append(chosen);
    list->clear();
    for (const QString& sound : qAsConst(sounds))
        list->addItem(nameOf(sound), sound);
    list->setCurrentIndex(sounds.indexOf(chosen));
}

} // namespace

SoundsPanel::SoundsPanel(EventSounds& sounds, QWidget* parent)
    : QWidget(parent)
    , m_sounds(sounds)
{
    auto* rows = new QGridLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Look::Gap);
    rows->setColumnStretch(1, 1);
    for (const Event event : AllEvents)
        addRow(rows, event);
}

void SoundsPanel::addRow(QGridLayout* rows, Event event)
{
    auto* caption = new QLabel;
    auto* list = new QComboBox;
    auto* test = new QPushButton;
    caption->setWordWrap(true);                                                  // in narrow windows
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // names can have any length
    list->setObjectName(EventSettings::key(event));
    caption->setBuddy(list);
    const auto chosen = [list] {
        return list->currentData().toString();
    };
    const auto enableTest = [=] {
        test->setEnabled(chosen() != EventSettings::NoSound);
    };
    connect(list, qOverload<int>(&QComboBox::currentIndexChanged), list, [=] {
        EventSettings::setSound(event, chosen());
        enableTest();
    });
    connect(test, &QPushButton::clicked, this, [=] { m_sounds.test(chosen()); });
    keepTranslated(list, [=] {
        fill(list, EventSettings::sound(event));
        caption->setText(text(captionId(event)));
        list->setAccessibleName(caption->text());
        test->setText(text("IDS_NOTIFY_TEST"));
        test->setAccessibleName(test->text() + QLatin1String(": ") + caption->text());
        enableTest();
    });
    const int row = rows->rowCount();
    rows->addWidget(caption, row, 0);
    rows->addWidget(list, row, 1);
    rows->addWidget(test, row, 2);
}
