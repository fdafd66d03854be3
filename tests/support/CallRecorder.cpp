#include "CallRecorder.h"

#include <QThread>

CallRecorder& CallRecorder::instance()
{
    static CallRecorder recorder;
    return recorder;
}

QVariant CallRecorder::record(const QString& name, const QVariantList& arguments, const QVariant& fallback)
{
    std::function<void()> hook;
    QVariant answer;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_calls.append({name, arguments, QThread::currentThreadId()});
        hook = m_hooks.value(name);
        answer = m_answers.value(name, fallback);
    }
    if (hook)
        hook();
    return answer;
}

void CallRecorder::setAnswer(const QString& name, const QVariant& answer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_answers.insert(name, answer);
}

void CallRecorder::setHook(const QString& name, const std::function<void()>& hook)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_hooks.insert(name, hook);
}

QStringList CallRecorder::names(const QStringList& operations) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QStringList names;
    for (const RecordedCall& call : m_calls) {
        if (operations.isEmpty() || operations.contains(call.name.section(QLatin1Char('.'), 1)))
            names.append(call.name);
    }
    return names;
}

QVector<RecordedCall> CallRecorder::calls(const QString& name) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QVector<RecordedCall> calls;
    for (const RecordedCall& call : m_calls) {
        if (call.name == name)
            calls.append(call);
    }
    return calls;
}

void CallRecorder::reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.clear();
    m_answers.clear();
    m_hooks.clear();
}
