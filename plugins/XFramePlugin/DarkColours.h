#pragma once

#include <QPalette>

/// The colours of the dark look of the usual window, for all roles that the style and the style sheet use.
QPalette darkColours();
