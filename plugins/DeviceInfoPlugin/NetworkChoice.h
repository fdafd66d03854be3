#pragma once

#include "FoundNetworks.h"
#include "support/Modems.h"
#include "support/Page.h"

class OperatorNames;
class QButtonGroup;
class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;
class Requests;
struct RequestEnd;

/// Lets the user look for networks and choose one, or leave the choice to the modem. GUI thread only.
class NetworkChoice : public Surface
{
    Q_OBJECT

public:
    /// Both arguments must outlive this object.
    NetworkChoice(Requests& requests, const OperatorNames& names, QWidget* parent = nullptr);

    /// What was found belongs to a modem and its SIM card.
    void showModem(const Modem& modem);

private:
    enum class Activity { None, Searching, Registering };

    /// Whether a modem is the shown one, with the same SIM card.
    bool isShown(const Modem& modem) const;

    QLayout* makeButtons();
    void translate();
    void search();
    void apply();
    void showEnd(const RequestEnd& end);
    void showFound(const QString& lines);
    void addFound(const FoundNetwork& network);
    void showNote(const QString& note);
    void setActivity(Activity activity);
    void clearFound();
    void followChoice();
    void showChosen();
    void check(const QString& network);
    QRadioButton* addChoice(const FoundNetwork& network);
    QString describe(const FoundNetwork& network) const;
    void describeFound();
    void enable();

    Requests& m_requests;
    const OperatorNames& m_names;
    Modem m_modem;           ///< id 0 without one
    bool m_isReady = false;  ///< its SIM card is
    QString m_current;       ///< code of the network in which it is
    bool m_isManual = false; ///< whether the modem keeps to a network that the user has chosen
    QString m_chosen;        ///< the code of that network; empty if it is not known, or the modem chooses
    QVector<FoundNetwork> m_found;
    Activity m_activity = Activity::None;
    QRadioButton* m_automatic;
    QButtonGroup* m_choices;
    QVBoxLayout* m_list;
    QLabel* m_note;
    QPushButton* m_search;
    QPushButton* m_apply;
};
