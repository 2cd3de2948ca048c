#pragma once

#include "shell/toolkit/Control.h"

namespace orvanlite {

/// What a strip shows, from left to right.
struct NoticeContent {
    QString objectName;
    QString iconKey;
    QString text;   ///< may hold simple HTML; breaks into lines where it has to
    QString action; ///< what a click does; empty where there is nothing to click
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

/// The same, one button as a whole: named by what it does, described by the notice.
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
