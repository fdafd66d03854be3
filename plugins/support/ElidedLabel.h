#pragma once

#include "support/Label.h"

/// A label that is as wide as its text if there is enough room. If not, the text ends with an ellipsis, and
/// the tool tip shows the full text. With word wrap, that happens only if a single word is too wide. GUI thread only.
class ElidedLabel : public Label
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// Sets the text; use this instead of setText().
    void setFullText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool isWrappable() const;
    void elide();

    QString m_fullText;
};
