#pragma once

/// In a CoreTest: fails, showing the first pattern that no log line matches after those of the previous ones.
#define VERIFY_LOGGED_IN_ORDER(...) QCOMPARE(log().firstMissingInOrder({__VA_ARGS__}), QString())
