#pragma once

#include <QDialog>
#include <QDialogButtonBox>

class QPushButton;

namespace orvanlite {

class MessageArea;
class WrappedLabel;

/// A question or an alert: icon, heading, message and buttons. Our own on every system: a native alert would
/// choose its default button itself.
///
/// Fits on the screen with its buttons: a long message scrolls, also by Page Up and Page Down. A word wider
/// than a line is elided in the middle, and the tooltip shows the full text.
class QuestionBox final : public QDialog {
    Q_OBJECT

public:
    /// The colour of the icon depends on the palette. Both texts are plain; the message may be empty.
    QuestionBox(const QString& iconKey, QColor (*tint)(const QPalette&), const QString& heading,
                const QString& message, QWidget* parent);

    /// The accepting button is shown last.
    void addButton(QPushButton* button, QDialogButtonBox::ButtonRole role);
    /// Return triggers the button, which has the focus when the box opens.
    void setDefaultButton(QPushButton* button);

    [[nodiscard]] const QString& heading() const;
    [[nodiscard]] const QString& message() const;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fit();

    WrappedLabel* m_heading;
    WrappedLabel* m_message;
    MessageArea* m_scrolling;
    QDialogButtonBox* m_buttons;
};

} // namespace orvanlite
