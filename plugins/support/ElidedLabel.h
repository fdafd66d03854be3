#pragma once

#include "support/Label.h"

/// A label that takes the width of its text if it gets that, and shortens the text otherwise; the full text
/// is the tool tip then.
class ElidedLabel : public Label
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setFullText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void elide();

    QString m_fullText;
};
