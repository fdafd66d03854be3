#include "HelpPlugin.h"

#include "support/Page.h"
#include "support/Text.h"

#include <QVBoxLayout>

namespace {

struct Answer
{
    const char* question;
    const char* answer;
};

constexpr Answer Answers[] = {
    {"IDS_HELP_UNRECOGNISED", "IDS_HELP_UNRECOGNISED_ANSWER"},
    {"IDS_HELP_PAGE_MISSING", "IDS_HELP_PAGE_MISSING_ANSWER"},
    {"IDS_HELP_NO_CALLS", "IDS_HELP_NO_CALLS_ANSWER"},
};

class HelpPage : public Page
{
    Q_OBJECT

public:
    explicit HelpPage(QWidget* parent)
        : Page("IDS_HELP_TITLE", "IDS_HELP_LEAD", Look::Sign::Help, parent)
    {
        keepTranslated(this, [this] { refresh(); });
    }

private:
    void refresh();
};

void HelpPage::refresh()
{
    clearContent();
    for (const auto& [question, answer] : Answers) {
        auto* card = new Card(text(question));
        card->addText(text(answer));
        content()->addWidget(card);
    }
    content()->addStretch();
}

} // namespace

QWidget* HelpPlugin::createPage(QWidget* parent)
{
    return new HelpPage(parent);
}

#include "HelpPlugin.moc"
