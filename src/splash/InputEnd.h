#pragma once

#include <QThread>

/// Reads standard input to its end and drops what comes. The other end is held by the program that started this
/// one, so input ends when that program closes it, ends, or crashes: reached() is emitted then, on this thread.
///
/// Reading cannot be interrupted. An object whose input has not ended must outlive the process.
class InputEnd : public QThread
{
    Q_OBJECT

Q_SIGNALS:
    void reached();

protected:
    void run() override;
};
