#pragma once

/// In a CoreTest: fails with the first of these patterns that no log line matches behind the ones before it.
#define VERIFY_LOGGED_IN_ORDER(...) QCOMPARE(log().firstMissingInOrder({__VA_ARGS__}), QString())
