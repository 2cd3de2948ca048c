#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// Content of a strip, from left to right.
struct NoticeContent {
    QString objectName;
    QString iconKey;
    QString text;   ///< may contain simple HTML; wraps
    QString action; ///< label of the click action; empty if not clickable
    QColor (*tint)(const QPalette&) = nullptr;
};

/// A tinted strip with a notice.
class NoticeStrip final : public QWidget {
    Q_OBJECT

public:
    NoticeStrip(const NoticeContent& content, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor (*m_tint)(const QPalette&);
};

/// A notice strip that is a single button. Its accessible name is the action, its description the notice.
class NoticeButton final : public Control {
    Q_OBJECT

public:
    NoticeButton(const NoticeContent& content, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paint(QPainter& painter) const override;
    [[nodiscard]] FocusRing focusRing() const override;

private:
    QColor (*m_tint)(const QPalette&);
};

} // namespace orvanlite
