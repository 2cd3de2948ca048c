#pragma once

// Precompiled for all sources of the programs: headers that many of them include.

#include <QtCore/QtCore>
#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QTableView>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <qcorotask.h>
#include <set>
#include <variant>
#include <vector>
