#include "shell/toolkit/RelativeFont.h"

#include "shell/toolkit/AppTheme.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace orvanlite {

namespace {

/// Setting a font size stops a widget from inheriting later changes of its parent's font.
class FontFollower final : public QObject {
public:
    FontFollower(QWidget* widget, double factor, QFont::Weight weight)
        : QObject(widget)
        , m_widget(*widget)
        , m_factor(factor)
        , m_weight(weight)
    {
        widget->installEventFilter(this);
        followParent();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &m_widget && event->type() == QEvent::ParentChange)
            followParent();
        else if (watched == m_parent && event->type() == QEvent::FontChange)
            apply();
        return false;
    }

private:
    void followParent()
    {
        if (m_parent)
            m_parent->removeEventFilter(this);
        m_parent = m_widget.parentWidget();
        if (!m_parent)
            return;
        m_parent->installEventFilter(this);
        apply();
    }
    void apply()
    {
        QFont font = AppTheme::scaled(m_parent->font(), m_factor);
        if (m_weight != QFont::Normal)
            font.setWeight(m_weight);
        m_widget.setFont(font);
    }

    QWidget& m_widget;
    QPointer<QWidget> m_parent;
    double m_factor;
    QFont::Weight m_weight;
};

class FontWatcher final : public QObject {
public:
    FontWatcher(QWidget* widget, std::function<void()> changed)
        : QObject(widget)
        , m_changed(std::move(changed))
    {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::FontChange && !std::exchange(m_isDue, true))
            QMetaObject::invokeMethod(this, &FontWatcher::call, Qt::QueuedConnection);
        return false;
    }

private:
    void call()
    {
        m_isDue = false;
        m_changed();
    }

    std::function<void()> m_changed;
    bool m_isDue = false;
};

} // namespace

void setRelativeFont(QWidget* widget, double factor, QFont::Weight weight)
{
    new FontFollower(widget, factor, weight);
}

void onFontChange(QWidget* widget, std::function<void()> changed)
{
    new FontWatcher(widget, std::move(changed));
}

} // namespace orvanlite
