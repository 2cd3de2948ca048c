#include "shell/toolkit/Dialogs.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTextQuestionWidth = 250;
constexpr int kMessageWidth = 320;
constexpr int kHeadingWidth = 220;
constexpr int kIconSize = 40;

/// The confirming button; red if the action is destructive.
class ActionButton final : public QPushButton {
public:
    ActionButton(const QString& text, bool isDestructive, QWidget* parent)
        : QPushButton(text, parent)
        , m_isDestructive(isDestructive)
    {
        applyColour();
    }

protected:
    void changeEvent(QEvent* event) override
    {
        QPushButton::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            applyColour();
    }

private:
    void applyColour()
    {
        const QColor red = AppTheme::legible(AppTheme::red(palette()), palette());
        if (!m_isDestructive || palette().color(QPalette::ButtonText) == red)
            return;
        QPalette own; // sets a single role; all others keep following the application palette
        own.setColor(QPalette::ButtonText, red);
        setPalette(own);
    }

    bool m_isDestructive;
};

void openOver(QDialog* dialog, const QString& objectName, const QString& title)
{
    dialog->setObjectName(objectName);
    dialog->setWindowTitle(title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    makeSheet(dialog);
    dialog->open();
}

/// Sets our icon, a heading and a readable line length. The texts contain user-defined names, so they are
/// plain text.
void dress(QMessageBox* box, Tone tone)
{
    const bool warns = tone == Tone::warning;
    const QColor colour = warns ? AppTheme::orange(box->palette()) : AppTheme::accent(box->palette());
    box->setIconPixmap(iconPixmap(warns ? u"exclamationmark.triangle.fill"_s : u"info.circle.fill"_s,
                                  kIconSize, colour, box->devicePixelRatioF()));
    box->setTextFormat(Qt::PlainText);
    for (QLabel* label : box->findChildren<QLabel*>()) {
        if (label->objectName() == u"qt_msgbox_informativelabel"_s) {
            label->setTextFormat(Qt::PlainText);
            label->setMinimumWidth(kMessageWidth);
        }
        if (label->objectName() == u"qt_msgbox_label"_s) {
            if (box->informativeText().isEmpty())
                label->setMinimumWidth(kHeadingWidth);
            label->setFont(AppTheme::semibold(label->font()));
        }
    }
}

} // namespace

void makeSheet(QDialog* dialog)
{
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint);
}

QMessageBox* ask(QWidget* context, const Question& question, std::function<void()> confirmed)
{
    auto* box = new QMessageBox(QMessageBox::Warning, question.title, question.title, QMessageBox::Cancel,
                                context->window());
    box->setInformativeText(question.message);
    dress(box, Tone::warning);
    auto* action = new ActionButton(question.action, question.isDestructive, box);
    box->addButton(action, QMessageBox::AcceptRole); // one role, so that its position never changes
    QAbstractButton* cancel = box->button(QMessageBox::Cancel);
    action->setObjectName(u"confirmButton"_s);
    cancel->setObjectName(u"cancelButton"_s);
    box->setEscapeButton(QMessageBox::Cancel);
    if (question.isDestructive)
        box->setDefaultButton(QMessageBox::Cancel);
    else
        box->setDefaultButton(action);
    QObject::connect(action, &QAbstractButton::clicked, context, std::move(confirmed));
    openOver(box, question.objectName, question.title);
    return box;
}

QMessageBox* tell(QWidget* context, Tone tone, const QString& objectName, const QString& title,
                  const QString& message)
{
    auto* box = new QMessageBox(tone == Tone::warning ? QMessageBox::Warning : QMessageBox::Information,
                                title, title, QMessageBox::Ok, context->window());
    box->setInformativeText(message);
    dress(box, tone);
    box->button(QMessageBox::Ok)->setObjectName(u"okButton"_s);
    openOver(box, objectName, title);
    return box;
}

QDialog* askForText(QWidget* context, const TextQuestion& question, std::function<void(QString)> confirmed)
{
    auto* dialog = new QDialog(context->window());
    auto* title = new QLabel(question.title, dialog);
    title->setFont(AppTheme::semibold(title->font()));
    auto* message = new QLabel(question.message, dialog);
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    auto* field = new QLineEdit(dialog);
    field->setObjectName(u"textField"_s);
    field->setPlaceholderText(question.prompt);
    field->setAccessibleName(question.prompt);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, dialog);
    QPushButton* action = buttons->addButton(question.action, QDialogButtonBox::AcceptRole);
    action->setObjectName(u"confirmButton"_s);
    action->setEnabled(false);
    action->setDefault(true);
    QPushButton* cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setObjectName(u"cancelButton"_s);

    auto* column = new QVBoxLayout(dialog);
    column->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace4);
    column->setSpacing(AppTheme::kSpace3);
    for (QWidget* row : {static_cast<QWidget*>(title), static_cast<QWidget*>(message),
                         static_cast<QWidget*>(field), static_cast<QWidget*>(buttons)}) {
        row->setFixedWidth(kTextQuestionWidth);
        column->addWidget(row);
    }
    column->setSizeConstraint(QLayout::SetFixedSize);

    QObject::connect(field, &QLineEdit::textChanged, action,
                     [action](const QString& text) { action->setEnabled(!text.isEmpty()); });
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    QObject::connect(dialog, &QDialog::accepted, context,
                     [field, confirmed = std::move(confirmed)] { confirmed(field->text()); });
    openOver(dialog, question.objectName, question.title);
    field->setFocus();
    return dialog;
}

} // namespace orvanlite
