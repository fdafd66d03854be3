#pragma once

/// How long the splash program waits before it shows anything, in milliseconds: a quick start needs no splash screen.
constexpr int SplashDelay = 400;
