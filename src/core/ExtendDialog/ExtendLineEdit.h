#pragma once

#include "skylume_global.h"

#include <QLineEdit>

/// The base of the library's line edits. GUI thread only.
class SKYLUME_EXPORT ExtendLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit ExtendLineEdit(QWidget* parent = nullptr);
    explicit ExtendLineEdit(QString const& text, QWidget* parent = nullptr);
};
