#pragma once

#include "ExtendDialog/ExtendLineEdit.h"

/// The line edit of a search box. The Up and Down keys move the cursor left and right. GUI thread only.
class SKYLUME_EXPORT SearchLineEdit : public ExtendLineEdit
{
    Q_OBJECT

public:
    using ExtendLineEdit::ExtendLineEdit;

Q_SIGNALS:
    void controlN(); ///< Ctrl+N was pressed
    void controlF(); ///< Ctrl+F was pressed

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
