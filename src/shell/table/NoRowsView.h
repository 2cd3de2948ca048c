#pragma once

#include <QWidget>

class QLabel;

namespace orvanlite {

class PressButton;

/// Shown in place of the table's rows: why there are none, and where it helps, a button that clears the
/// filters.
class NoRowsView final : public QWidget {
    Q_OBJECT

public:
    struct Reason {
        QString heading; ///< empty: nothing is shown
        QString caption;
        bool isFiltered = false;
    };

    explicit NoRowsView(QWidget* parent);

    /// A new reason is announced to screen readers.
    void setReason(const Reason& reason);
    [[nodiscard]] PressButton* button() const { return m_clear; }

Q_SIGNALS:
    void clearClicked();

private:
    QLabel* m_heading;
    QLabel* m_caption;
    PressButton* m_clear;
};

} // namespace orvanlite
