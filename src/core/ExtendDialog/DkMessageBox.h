#pragma once

#include "skylume_global.h"

#include <QMessageBox>

/// The message box inside an ExtendDialog, which follows its size. GUI thread only.
class SKYLUME_EXPORT DkMessageBox : public QMessageBox
{
    Q_OBJECT

public:
    using QMessageBox::QMessageBox;

    bool m_bEscapeAllowed = true; ///< whether Escape answers the box

Q_SIGNALS:
    /// The box has a new size. To be connected to ExtendDialog::changeSize().
    void changeSize(QSize boxSize);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
