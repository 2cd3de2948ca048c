#pragma once

#include <QString>

#include <functional>

class QDialog;
class QMessageBox;
class QWidget;

namespace orvanlite {

/// A question that stands before an action.
struct Question {
    QString objectName;
    QString title;
    QString message;
    QString action;             ///< label of the button that does it
    bool isDestructive = false; ///< the action is not the default then
};

/// Asks over the parent's window, with "Cancel" (`cancelButton`; Escape) and the action (`confirmButton`).
/// `confirmed` runs when the action is chosen, and only while `context` lives. Does not wait: the box deletes itself
/// when it is closed.
QMessageBox* ask(QWidget* context, const Question& question, std::function<void()> confirmed);

/// Makes it a sheet over its parent's window: no button of the window's frame but the one that closes it.
void makeSheet(QDialog* dialog);

enum class Tone { warning, information };

/// Tells the user something, with "OK" (`okButton`). The message may be empty.
QMessageBox* tell(QWidget* context, Tone tone, const QString& objectName, const QString& title,
                  const QString& message);

/// A question with one line of text.
struct TextQuestion {
    QString objectName;
    QString title;
    QString message;
    QString prompt; ///< what the field is for, also its name for readers
    QString action;
};

/// The same with a field (`textField`), 250 wide inside. The action is disabled while the field is empty and gets its
/// text.
QDialog* askForText(QWidget* context, const TextQuestion& question, std::function<void(QString)> confirmed);

} // namespace orvanlite
