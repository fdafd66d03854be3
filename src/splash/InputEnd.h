#pragma once

#include <QThread>

/// Reads standard input to its end, drops what comes, and finishes then. The other end is held by the program
/// that started this one, so input ends when that program closes it, ends, or crashes.
///
/// Reading cannot be interrupted: an object that has not finished must outlive the process.
class InputEnd : public QThread
{
    Q_OBJECT

protected:
    void run() override;
};
