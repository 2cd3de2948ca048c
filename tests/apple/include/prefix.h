#pragma once

// Precompiled: headers that nearly every source includes. Those of Qt and AppKit take most of the time.

#include <missing.h>

#include <QCoreApplication>
#include <QVariant>

#include <qcorotask.h>
