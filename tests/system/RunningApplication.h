#pragma once

#include "Startup/Startup.h"
#include "TestHome.h"

#include <QApplication>
#include <QWidget>

#include <memory>

class QAbstractButton;

/// Base of the tests that run the whole application in their own process, with its main window at hand.
class RunningApplication : public QObject
{
    Q_OBJECT

protected:
    /// Starts the application, which shows its main window. It goes on when its windows are closed.
    void start();

    /// Ends it, as the launcher does.
    void end();

    /// The main window; null until the application has been started.
    QWidget* window() const;

    /// The first object in the main window that is of a plugin's class; null when there is none.
    template <typename Base = QWidget>
    Base* part(const char* className) const
    {
        for (Base* object : window()->findChildren<Base*>())
            if (object->inherits(className))
                return object;
        return nullptr;
    }

    /// The visible windows of a class.
    static QWidgetList windows(const char* className);

    /// A button in the frame of a window.
    static QAbstractButton* titleButton(const QWidget* window, const char* name);

    /// Chooses an entry of the menus as the user does, such as a language by its own name.
    void choose(const QString& entry) const;

    /// Changes to the compact window with a skin, or to the usual one: "" for its light colours, "dark" for the others.
    void useSkin(const QByteArray& name) const;

    /// The action or button of the main window that has the shortcut; null when none has.
    QObject* owner(const char* shortcut) const;

private:
    std::unique_ptr<Startup> m_startup;
};

/// The main function of such a test.
/// @param settings content of the user's settings file
template <typename Test>
int runTest(int argc, char** argv, const QByteArray& settings)
{
    const TestHome home(settings);
    QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0); // pictures of windows can be compared
    Test test;
    return QTest::qExec(&test, argc, argv);
}
