#include "HelpPlugin.h"

#include "support/Page.h"
#include "support/Text.h"

#include <QVBoxLayout>

namespace {

namespace Texts {
constexpr auto Title = u"Help";
constexpr auto Lead = u"When something does not go as it should.";

struct Answer
{
    const char16_t* question;
    const char16_t* answer;
};

constexpr Answer Answers[] = {
    {u"The modem is not recognised",
     u"Take it out, wait five seconds and plug it in again, directly into the computer rather than into a "
     u"hub. "
     u"Two modems at once are recognised, but only one can be customised for."},
    {u"A page is missing", u"Which pages there are depends on the operator, the modem and the SIM card. The "
                           u"page \u201cPlugins\u201d "
                           u"lists all of them and says why each is there or not."},
    {u"Calls do not start", u"Some modems and SIM cards are for data only. Check the number as well: digits, "
                            u"* and # with an optional "
                            u"leading +."},
};
} // namespace Texts

class HelpPage : public Page
{
public:
    explicit HelpPage(QWidget* parent)
        : Page(text(Texts::Title), text(Texts::Lead), Look::Sign::Help, parent)
    {
        for (const auto& [question, answer] : Texts::Answers) {
            auto* card = new Card(text(question));
            card->addText(text(answer));
            content()->addWidget(card);
        }
        content()->addStretch();
    }
};

} // namespace

QWidget* HelpPlugin::createPage(QWidget* parent)
{
    return new HelpPage(parent);
}
