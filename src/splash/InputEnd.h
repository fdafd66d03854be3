#pragma once

#include <QThread>

/// Reads and discards standard input and finishes when it ends. The program that started this one holds the
/// other end of the pipe, so input ends when that program closes it, exits or crashes.
///
/// Reading cannot be interrupted: never delete an object that has not finished.
class InputEnd : public QThread
{
    Q_OBJECT

protected:
    void run() override;
};
