#pragma once

#include <QWidget>

class QLineEdit;

/// The field for the number, with a button that deletes its last character or, held down, all of it.
class NumberField : public QWidget
{
    Q_OBJECT

public:
    explicit NumberField(QWidget* parent = nullptr);

    QLineEdit* edit() const { return m_edit; }

private:
    QLineEdit* m_edit;
};
