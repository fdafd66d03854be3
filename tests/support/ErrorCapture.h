#pragma once

#include <QFile>

#include <unistd.h>

#include <cstdio>

/// Sends standard error to a file while it lives.
class ErrorCapture
{
public:
    explicit ErrorCapture(const QString& path)
        : m_file(path)
        , m_original(dup(2))
    {
        m_file.open(QIODevice::WriteOnly);
        std::fflush(stderr);
        dup2(m_file.handle(), 2);
    }
    ~ErrorCapture()
    {
        std::fflush(stderr);
        dup2(m_original, 2);
        close(m_original);
    }
    Q_DISABLE_COPY_MOVE(ErrorCapture)

private:
    QFile m_file;
    int m_original;
};

/// What a call writes to standard error, by way of a file.
template <typename Call>
QByteArray errorOutput(const QString& path, Call call)
{
    {
        const ErrorCapture capture(path);
        call();
    }
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
