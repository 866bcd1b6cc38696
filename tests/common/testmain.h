#pragma once
// Test classes register themselves; one main runs them all, so a subsystem is one executable.
#include <QObject>
#include <functional>
#include <vector>

namespace testreg {
using Factory = std::function<QObject *()>;
int add(const char *name, Factory f);
}

#define BRELVOX_TEST(Class) \
    static const int Class##_registered = testreg::add(#Class, [] { return new Class; });
