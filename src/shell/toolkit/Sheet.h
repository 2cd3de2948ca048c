#pragma once

#include <QDialog>

class QAbstractButton;

namespace orvanlite {

/// A window-modal dialog in which Return clicks the main button, unless the focused button takes the key.
class Sheet : public QDialog {
    Q_OBJECT

protected:
    explicit Sheet(QWidget* parent);

    /// The button for Return; null for none.
    [[nodiscard]] virtual QAbstractButton* mainButton() const = 0;

    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace orvanlite
