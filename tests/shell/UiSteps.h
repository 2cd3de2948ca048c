#pragma once

#include "support/Fakes.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QTest>

namespace orvanlite::test {

template <typename Widget = QAbstractButton>
Widget& named(const QWidget& window, const QString& objectName)
{
    auto* found = window.findChild<Widget*>(objectName);
    if (!found)
        qFatal("no control is named %s", qPrintable(objectName));
    return *found;
}

/// Processes all events that are due.
inline void settle()
{
    for (int turn = 0; turn < 4; ++turn)
        turnEventLoop();
}

[[nodiscard]] inline QString focused()
{
    const QWidget* focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QString();
}

inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    settle();
}

inline void press(const QWidget& window, const QString& objectName, Qt::Key key = Qt::Key_Space)
{
    auto& control = named<QWidget>(window, objectName);
    control.setFocus();
    QTest::keyClick(&control, key);
    settle();
}

inline void click(QWidget& control, const QPoint& place = {})
{
    QTest::mouseClick(&control, Qt::LeftButton, {}, place);
    settle();
}

inline void click(const QWidget& window, const QString& objectName)
{
    click(named<QWidget>(window, objectName));
}

inline void click(const QAbstractItemView& view, int row, int column = 0,
                  Qt::KeyboardModifiers modifiers = {})
{
    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers,
                      view.visualRect(view.model()->index(row, column)).center());
    settle();
}

/// The rows of a list as a screen reader reads them, with the state of their check boxes.
[[nodiscard]] inline QString spokenRows(const QAbstractItemView& view)
{
    QStringList lines;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        const QVariant check = index.data(Qt::CheckStateRole);
        const QString mark = check.toInt() == Qt::Checked ? u"[x] "_s : u"[ ] "_s;
        lines.append((check.isValid() ? mark : QString()) + index.data(Qt::AccessibleTextRole).toString());
    }
    return lines.join(u'|');
}

/// The control as assistive technology sees it.
[[nodiscard]] inline QAccessibleInterface& spoken(QWidget& control)
{
    return *QAccessible::queryAccessibleInterface(&control);
}

[[nodiscard]] inline QString spokenName(QWidget& control) { return spoken(control).text(QAccessible::Name); }

/// The focusable controls. Each must have a unique object name and an accessible name.
inline QList<QWidget*> expectNamedControls(const QWidget& window)
{
    QList<QWidget*> controls = window.findChildren<QWidget*>();
    controls.removeIf(
        [](const QWidget* each) { return !each->isVisible() || each->focusPolicy() == Qt::NoFocus; });
    QSet<QString> identities;
    for (QWidget* each : controls) {
        EXPECT_FALSE(spokenName(*each).isEmpty()) << qPrintable(each->objectName());
        EXPECT_FALSE(each->objectName().isEmpty() || identities.contains(each->objectName()))
            << each->metaObject()->className() << qPrintable(each->objectName());
        identities.insert(each->objectName());
    }
    return controls;
}

class FontScale {
public:
    explicit FontScale(double factor)
    {
        QFont large = m_before;
        large.setPointSizeF(m_before.pointSizeF() * factor);
        QApplication::setFont(large);
    }
    FontScale(const FontScale&) = delete;
    FontScale& operator=(const FontScale&) = delete;
    ~FontScale() { QApplication::setFont(m_before); }

private:
    QFont m_before = QApplication::font();
};

} // namespace orvanlite::test
