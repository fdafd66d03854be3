#pragma once

#include "skylume_global.h"

#include <QLineEdit>

/// The base of the library's line edits. GUI thread only.
class SKYLUME_EXPORT ExtendLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    /// Takes over a right-to-left layout of the application.
    explicit ExtendLineEdit(QWidget* parent = nullptr);

    /// Only sets the text; the layout direction is inherited as usual.
    explicit ExtendLineEdit(QString const& text, QWidget* parent = nullptr);
};
