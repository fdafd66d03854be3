#pragma once

#include "support/Look.h"

#include <QWidget>

/// A dot in the colour of a meaning. Labels cannot have such colours: style sheets replace their palettes.
class Swatch : public QWidget
{
    Q_OBJECT

public:
    explicit Swatch(Look::Tone tone);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look::Tone m_tone;
};
