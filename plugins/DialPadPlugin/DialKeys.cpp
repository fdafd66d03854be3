#include "DialKeys.h"

#include "HoldButton.h"
#include "support/Look.h"

#include <QGridLayout>
#include <QLabel>

#include <iterator>

namespace {

constexpr int KeyColumns = 3;
constexpr int KeyHeight = 52;
constexpr QLatin1String Plus("+");

struct Key
{
    const char* character;
    const char* letters;
};

/// As on telephones everywhere, in every language.
constexpr Key Keys[] = {
    {"1", ""},     {"2", "ABC"}, {"3", "DEF"},  {"4", "GHI"}, {"5", "JKL"}, {"6", "MNO"},
    {"7", "PQRS"}, {"8", "TUV"}, {"9", "WXYZ"}, {"*", ""},    {"0", "+"},   {"#", ""},
};

void addLine(QLayout* lines, QLabel* line)
{
    line->setAlignment(Qt::AlignCenter);
    line->setAttribute(Qt::WA_TransparentForMouseEvents);
    lines->addWidget(line);
}

} // namespace

DialKeys::DialKeys(QWidget* parent)
    : QWidget(parent)
{
    setLayoutDirection(Qt::LeftToRight); // the keys of a telephone are never mirrored
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(Look::Gap);
    for (int index = 0; index < int(std::size(Keys)); ++index)
        grid->addWidget(
            makeKey(QString::fromLatin1(Keys[index].character), QString::fromLatin1(Keys[index].letters)),
            index / KeyColumns, index % KeyColumns);
}

QWidget* DialKeys::makeKey(const QString& character, const QString& letters)
{
    auto* key = new HoldButton;
    key->setMinimumHeight(KeyHeight);
    key->setAccessibleName(character);
    auto* lines = new QVBoxLayout(key);
    lines->setContentsMargins(0, Look::Gap / 2, 0, Look::Gap / 2);
    lines->setSpacing(0);
    addLine(lines, Look::label(character, Look::TitleText));
    if (!letters.isEmpty()) {
        QLabel* const line = Look::quietLabel(letters);
        Look::setFont(line, Look::SmallText);
        addLine(lines, line);
    }
    connect(key, &HoldButton::tapped, this, [this, character] { Q_EMIT entered(character); });
    const QString heldCharacter = letters == Plus ? letters : character;
    connect(key, &HoldButton::held, this, [this, heldCharacter] { Q_EMIT entered(heldCharacter); });
    return key;
}
