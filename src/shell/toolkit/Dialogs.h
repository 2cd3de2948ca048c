#pragma once

#include <QString>

#include <functional>

class QDialog;
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
QDialog* ask(QWidget* context, const Question& question, std::function<void()> confirmed);

/// Makes the dialog window-modal, with a close button as the only button in its title bar.
void makeSheet(QDialog* dialog);

enum class Tone { warning, information };

/// Shows an alert with "OK" (`okButton`). The message may be empty.
QDialog* tell(QWidget* context, Tone tone, const QString& objectName, const QString& title,
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
/// empty. `confirmed` receives the text and returns whether it was used; otherwise the dialog stays open.
QDialog* askForText(QWidget* context, const TextQuestion& question, std::function<bool(QString)> confirmed);

} // namespace orvanlite
