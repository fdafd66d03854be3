#include "CallRecorder.h"

#include <QThread>

#include <algorithm>

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
        auto state = m_state.lock();
        state->calls.append({name, arguments, QThread::currentThreadId()});
        hook = state->hooks.value(name);
        answer = state->answers.value(name, fallback);
    }
    if (hook)
        hook();
    return answer;
}

QStringList CallRecorder::names(const QStringList& operations)
{
    QStringList names;
    const QVector<RecordedCall> calls = m_state.lock()->calls;
    for (const RecordedCall& call : calls) {
        if (operations.isEmpty() || operations.contains(call.name.section(QLatin1Char('.'), 1)))
            names.append(call.name);
    }
    return names;
}

QVector<RecordedCall> CallRecorder::calls(const QString& name)
{
    QVector<RecordedCall> calls = m_state.lock()->calls;
    calls.erase(std::remove_if(calls.begin(), calls.end(),
                               [&](const RecordedCall& call) { return call.name != name; }),
                calls.end());
    return calls;
}
