#pragma once

#include <QVector>
#include <QWidget>

class Card;

/// A value with its caption.
struct Detail
{
    QString caption;
    QString value;
    bool isPrivate = false; ///< identifies the user, so it is hidden at first
};

bool operator==(const Detail& left, const Detail& right);

/// A panel with values that users pass on to support. The properties let a plugin use the panel of another one, whose
/// class is not the same. GUI thread only.
class DetailsCard : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool revealed READ isRevealed WRITE setRevealed)
    Q_PROPERTY(QString plainText READ plainText)

public:
    explicit DetailsCard(QWidget* parent = nullptr);

    /// Details without a value are left out. Without any the card is hidden.
    void showDetails(const QString& title, const QVector<Detail>& details);

    /// Whether private values can be read.
    bool isRevealed() const { return m_isRevealed; }
    void setRevealed(bool isRevealed);

    /// The title and the details, private ones too, each in a line; empty while the card is hidden.
    QString plainText() const;

private:
    void rebuild();

    QString m_title;
    QVector<Detail> m_details;
    bool m_isRevealed = false;
    Card* m_card = nullptr;
};
