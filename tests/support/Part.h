#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QtTest>

constexpr int LongestWait = 30000; // milliseconds; any step takes much less, on a busy machine too
#define AWAIT(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, LongestWait)
#define AWAIT_EQUAL(value, expected) QTRY_COMPARE_WITH_TIMEOUT(value, expected, LongestWait)

/// A page, a panel or a dialog of the running application, which may come and go.
struct Part
{
    const char* className;

    /// Null while none is visible.
    QWidget* widget() const
    {
        for (QWidget* candidate : QApplication::allWidgets()) {
            if (candidate->inherits(className) && candidate->isVisible())
                return candidate;
        }
        return nullptr;
    }

    /// The visible widgets of a kind in it, in order.
    template <typename Kind>
    QVector<Kind*> all() const
    {
        QVector<Kind*> found;
        const QWidget* const part = widget();
        for (Kind* child : part ? part->findChildren<Kind*>() : QList<Kind*>()) {
            if (child->isVisible())
                found.append(child);
        }
        return found;
    }

    /// What can be read there, "A | B | C"; what is off is in brackets.
    QString texts() const
    {
        QStringList found;
        for (const QWidget* child : all<QWidget>()) {
            const bool isElided = child->inherits("ElidedLabel"); // its description is the full text
            const QString text =
                isElided ? child->accessibleDescription() : child->property("text").toString();
            if (!text.isEmpty() && !child->inherits("QLineEdit"))
                found << (child->isEnabled() ? text : '[' + text + ']');
        }
        return found.join(" | ");
    }

    /// Waits until this can be read there.
    bool says(const QString& text) const
    {
        if (QTest::qWaitFor([&] { return texts().contains(text); }, LongestWait))
            return true;
        qWarning("%s says: %s", className, qUtf8Printable(texts()));
        return false;
    }

    /// The first button whose label begins so, or with this accessible name. Ends the test program if there is none.
    QAbstractButton* button(const QString& label = {}) const
    {
        for (QAbstractButton* candidate : all<QAbstractButton>()) {
            if (candidate->text().startsWith(label) || candidate->accessibleName() == label)
                return candidate;
        }
        qFatal("%s has no button %s", className, qUtf8Printable(label));
    }
};
