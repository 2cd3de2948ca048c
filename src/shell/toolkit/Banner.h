#pragma once

#include <QWidget>

class QAbstractButton;
class QLabel;

namespace orvanlite {

class ElidedLabel;
class Glide;

/// A tinted row over the whole width: icon, title, notes below it on one line, a button, and a small one that
/// dismisses. It slides in from the top edge and out again; what lies below makes room. In a narrow window the
/// button goes below the title. Hidden until it is shown.
class Banner final : public QWidget {
    Q_OBJECT

public:
    struct Look {
        QString objectName;
        QString iconKey;
        QString action;     ///< the button's text
        QString dismissTip; ///< what dismissing means
        QColor (*tint)(const QPalette&) = nullptr;
    };

    Banner(const Look& look, QWidget* parent);

    /// Without notes there is no second line.
    void setTexts(const QString& title, const QString& notes);
    /// Takes 0.3 s. Going, it takes no clicks any more.
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
    Glide* m_progress; ///< from away to there
    bool m_isShown = false;
};

} // namespace orvanlite
