#pragma once

#include "Guarded.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>

#if defined(CALLRECORDER_BUILD)
#define CALLRECORDER_EXPORT Q_DECL_EXPORT
#else
#define CALLRECORDER_EXPORT Q_DECL_IMPORT
#endif

/// One call that a test plugin received.
struct RecordedCall
{
    QString name; ///< plugin and operation, "TestAlpha.Init"
    QVariantList arguments;
    Qt::HANDLE thread;
};

/// Every call that the test plugins receive, in order, and what they answer. The tests script the plugins
/// here, so that one plugin source serves all of them. Any thread.
class CALLRECORDER_EXPORT CallRecorder
{
public:
    static CallRecorder& instance();

    /// Notes a call, runs its hook and returns its answer.
    /// @param fallback the answer when the test has not set one
    QVariant record(const QString& name, const QVariantList& arguments = {}, const QVariant& fallback = {});

    /// What the call answers from now on.
    void setAnswer(const QString& name, const QVariant& answer) { m_state.lock()->answers[name] = answer; }

    /// Runs within every such call, before it returns; may throw.
    void setHook(const QString& name, const std::function<void()>& hook)
    {
        m_state.lock()->hooks[name] = hook;
    }

    /// The names of all calls, or of those of the given operations ("Init"), in order.
    QStringList names(const QStringList& operations = {});

    /// All calls of that name, in order.
    QVector<RecordedCall> calls(const QString& name);

    /// Forgets calls, answers and hooks.
    void reset() { m_state.lock().value = {}; }

private:
    struct State
    {
        QVector<RecordedCall> calls;
        QHash<QString, QVariant> answers;
        QHash<QString, std::function<void()>> hooks;
    };
    Guarded<State> m_state;
};
