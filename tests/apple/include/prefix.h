#pragma once

// What nearly every source includes, compiled once for all of them: Qt's and AppKit's headers are most of the work.

#include <missing.h>

#include <QCoreApplication>
#include <QVariant>

#include <qcorotask.h>
