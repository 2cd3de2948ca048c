#pragma once

#include <QWidget>

class QAbstractButton;
class QLabel;

namespace orvanlite {

class ElidedLabel;
class Glide;

/// A tinted full-width row with an icon, a title, one line of notes, an action button and a dismiss button.
/// Slides in and out at the top edge; the content below moves accordingly. In a narrow window the action
/// button wraps below the title. Initially hidden.
class Banner final : public QWidget {
    Q_OBJECT

public:
    struct Look {
        QString objectName;
        QString iconKey;
        QString action;     ///< button label
        QString dismissTip; ///< tooltip of the dismiss button
        QColor (*tint)(const QPalette&) = nullptr;
    };

    Banner(const Look& look, QWidget* parent);

    /// Empty notes hide the second line.
    void setTexts(const QString& title, const QString& notes);
    /// Animated over 0.3 s. The buttons ignore clicks while the banner slides out.
    void setShown(bool isShown);
    [[nodiscard]] bool isShown() const { return m_isShown; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

Q_SIGNALS:
    void actionClicked();
    void dismissClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Places {
        QRect icon;
        QRect title;
        QRect notes;
        QRect action;
        QRect dismiss;
        int height = 0;
    };
    [[nodiscard]] Places arrange(int width) const;
    void place();
    void showProgress();

    QColor (*m_tint)(const QPalette&);
    QLabel* m_icon;
    QLabel* m_title;
    ElidedLabel* m_notes;
    QAbstractButton* m_action;
    QAbstractButton* m_dismiss;
    Glide* m_progress; ///< 0 is hidden, 1 is fully shown
    bool m_isShown = false;
};

} // namespace orvanlite
