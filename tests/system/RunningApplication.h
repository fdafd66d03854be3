#pragma once

#include <QObject>
#include <QTemporaryDir>

#include <memory>

class QWidget;
class Startup;

/// An empty home for the application in this process. Create it before QApplication.
class TestHome
{
public:
    /// @param settings content of the user's settings file
    explicit TestHome(const QByteArray& settings);

private:
    QTemporaryDir m_folder;
};

/// Base of the tests that run the whole application in their own process, with its main window at hand.
class RunningApplication : public QObject
{
    Q_OBJECT

public:
    RunningApplication();
    ~RunningApplication() override;

protected:
    /// Starts the application, which shows its main window.
    void start();

    /// Ends it, as the launcher does.
    void end();

    /// The main window; null until the application has been started.
    QWidget* window() const;

    /// Lets the device service find this in its simulator's file.
    static void simulate(const QByteArray& modems);

    /// Chooses a language as the user does, by its place among the languages' own names.
    void choose(const QString& ownName) const;

    /// The action or button of the main window that has the shortcut; null when none has.
    QObject* owner(const char* shortcut) const;

private:
    std::unique_ptr<Startup> m_startup;
};
