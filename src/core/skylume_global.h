#pragma once

#include "skylume_export.h"

#include <QtGlobal>
