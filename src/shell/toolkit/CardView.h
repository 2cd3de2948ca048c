#pragma once

#include "shell/toolkit/Announce.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/FocusRing.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/ThinScrollBar.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace orvanlite {

/// Common behaviour of our row lists, on top of QListView or QTableView. Rows are not selectable; the current
/// row shows a focus ring for keyboard users only. A click anywhere on a row or Space activates it. A double
/// click counts as two clicks, and key repeat is ignored.
template <typename View>
class CardView : public View {
public:
    /// Whether delegates should draw the focus ring on this row.
    [[nodiscard]] bool showsFocus(const QModelIndex& index) const
    {
        return m_showsFocus && this->hasFocus() && this->currentIndex() == index;
    }
    void paintFocus(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                    double cornerRadius) const
    {
        if (showsFocus(index))
            drawFocusRing(painter, QRectF(option.rect).adjusted(1, 1, -1, -1), cornerRadius,
                          AppTheme::accent(option.palette), 1.5);
    }

protected:
    explicit CardView(QWidget* parent)
        : View(parent)
    {
        this->setSelectionMode(QAbstractItemView::NoSelection);
        this->setEditTriggers(QAbstractItemView::NoEditTriggers);
        this->setFrameShape(QFrame::NoFrame);
        this->setMouseTracking(true);
        this->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        this->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        this->setVerticalScrollBar(new ThinScrollBar(Qt::Vertical, this));
        this->viewport()->setAutoFillBackground(false);
        QObject::connect(this, &QAbstractItemView::clicked, this,
                         [this](const QModelIndex& index) { activate(index); });
    }

    virtual void activate(const QModelIndex& /*index*/) {}
    /// The row that becomes current when the list first gets the keyboard focus.
    [[nodiscard]] virtual QModelIndex firstIndex() const { return this->model()->index(0, 0); }

    void keyPressEvent(QKeyEvent* event) override
    {
        showKeyboardFocus(true);
        if (event->key() != Qt::Key_Space)
            View::keyPressEvent(event);
        else if (this->currentIndex().isValid() && !KeyRepeat::isRepeat(*event))
            activate(this->currentIndex());
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        showKeyboardFocus(false);
        View::mousePressEvent(event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void focusInEvent(QFocusEvent* event) override
    {
        if (!this->currentIndex().isValid() && event->reason() != Qt::MouseFocusReason)
            this->selectionModel()->setCurrentIndex(firstIndex(), QItemSelectionModel::NoUpdate);
        View::focusInEvent(event);
        showKeyboardFocus(showsFocusAfter(event->reason(), m_showsFocus));
        announceCurrentRow(this);
    }
    void focusOutEvent(QFocusEvent* event) override
    {
        View::focusOutEvent(event);
        this->viewport()->update();
    }
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override
    {
        View::currentChanged(current, previous);
        this->viewport()->update();
    }
    void changeEvent(QEvent* event) override
    {
        View::changeEvent(event);
        if (event->type() == QEvent::FontChange)
            this->scheduleDelayedItemsLayout();
    }

private:
    void showKeyboardFocus(bool shows)
    {
        m_showsFocus = shows;
        this->viewport()->update();
    }

    bool m_showsFocus = true;
};

} // namespace orvanlite
