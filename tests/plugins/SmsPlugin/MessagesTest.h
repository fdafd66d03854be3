#pragma once

#include "Part.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "RunningApplication.h"
#include "common/CommonUtils.h"

#include <QtWidgets>

const QByteArray V2 = "[modem M]\nmodel=Lume V2\nstate=attached\nimsi=262011234567890\nnetwork=26201\n"
                      "request-time=1\n";
const QByteArray OtherSim = QByteArray(V2).replace("4567890", "0000000");
const QByteArray Slow = QByteArray(V2).replace("time=1", "time=50000"); ///< does not answer during a test
const QByteArray X5 = QByteArray(OtherSim).replace("modem M", "modem X").replace("V2", "X5");

/// A message with its time.
inline QByteArray message(const QByteArray& id, const QByteArray& sender, const QByteArray& time,
                          const QByteArray& text)
{
    return "[message " + id + "]\nmodem=M\nsender=" + sender + "\ntime=2024-03-0" + time +
           ":00\ntext=" + text + '\n';
}

const QByteArray First = message("1", "+49 30 1", "1T09:00", "Hello from Berlin");
const QByteArray Second = message("2", "Bank", "2T09:00", "Your code");
const QByteArray Three = First + Second + message("3", "+49(30)1", "3T09:00", "And bye");

enum Role { TimeRole = Qt::UserRole, TextRole, UnreadRole };

/// Base of the tests of the page "Messages" as its users see it, with simulated modems.
class MessagesTest : public RunningApplication
{
protected:
    /// Starts the application with three messages in two conversations.
    void begin()
    {
        CommonUtils::SetSettings("callui", "callvoice", "1");
        simulate(V2 + Three);
        start();
        AWAIT(Startup::GetPluginContainer()->IsPluginsConfigInitialized() &&
              owner("Ctrl+D"));                        // what the modem brings
        AWAIT_EQUAL(rows(), QString("+49(30)1|Bank")); // spellings of a number are one conversation
    }

    QAbstractItemView* list() const { return window()->findChild<QAbstractItemView*>("messageList"); }
    QTextBrowser* thread() const { return list()->parentWidget()->findChild<QTextBrowser*>(); }
    QAbstractScrollArea* page() const { return part<QAbstractScrollArea>("MessagesPage"); }
    static void show() { Startup::GetMainFrameService()->ShowPage("B7D24F91-6E03-4C8A-A5D7-92E8F10B3C46"); }

    /// What the rows of the list show, separated by "|".
    QString rows(int role = Qt::DisplayRole) const
    {
        QStringList texts;
        const QAbstractItemModel* const model = list() ? list()->model() : nullptr;
        for (int row = 0; model && row < model->rowCount(); ++row)
            texts.append(model->index(row, 0).data(role).toString());
        return texts.join('|');
    }

    void choose(int row) const { list()->setCurrentIndex(list()->model()->index(row, 0)); }
    void click(const char* shortcut) const { QMetaObject::invokeMethod(owner(shortcut), "click"); }
    static void press(QWidget* widget, Qt::Key key) { QTest::keyClick(widget, key, Qt::ControlModifier); }

    /// Whether the main window or a dialog shows these words.
    static bool says(const QString& words) { return Part{"MainWindow"}.texts().contains(words); }

    /// Answers the question that is shown.
    static void answer(const QString& button)
    {
        const QPointer<QWidget> question = Part{"DkMessageBox"}.widget();
        Part{"DkMessageBox"}.button(button)->click();
        AWAIT(!question);
    }

    /// Simulates this modem with the three messages, and waits until another message shows that it is in use.
    void use(const QByteArray& modem)
    {
        const QByteArray sign = QByteArray::number(++m_uses);
        simulate(modem + Three + message(sign, "Dora", "1T08:" + sign, sign));
        AWAIT(rows(TextRole).endsWith(sign));
    }

private:
    int m_uses = 10;
};
