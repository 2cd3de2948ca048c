#pragma once

#include <QString>

#include <functional>

class QDialog;
class QMessageBox;
class QWidget;

namespace orvanlite {

/// A confirmation before an action.
struct Question {
    QString objectName;
    QString title;
    QString message;
    QString action;             ///< label of the confirming button
    bool isDestructive = false; ///< then Cancel is the default
};

/// Opens a sheet with "Cancel" (`cancelButton`; Escape) and the action (`confirmButton`). `confirmed` runs if
/// the action is chosen while `context` is alive. Returns immediately; the box deletes itself when closed.
QMessageBox* ask(QWidget* context, const Question& question, std::function<void()> confirmed);

/// Makes the dialog window-modal, with a close button as the only button in its title bar.
void makeSheet(QDialog* dialog);

enum class Tone { warning, information };

/// Shows an alert with "OK" (`okButton`). The message may be empty.
QMessageBox* tell(QWidget* context, Tone tone, const QString& objectName, const QString& title,
                  const QString& message);

/// A prompt for one line of text.
struct TextQuestion {
    QString objectName;
    QString title;
    QString message;
    QString prompt; ///< placeholder and accessible name of the field
    QString action;
};

/// Like ask(), with a text field (`textField`), 250 pixels wide. The action is disabled while the field is
/// empty; `confirmed` receives the text.
QDialog* askForText(QWidget* context, const TextQuestion& question, std::function<void(QString)> confirmed);

} // namespace orvanlite
