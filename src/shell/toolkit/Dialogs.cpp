#include "shell/toolkit/Dialogs.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/QuestionBox.h"
#include "shell/toolkit/RelativeFont.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QVBoxLayout>

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTextQuestionWidth = 250;

/// A button of a question; red if its action is destructive. The key that opened the question does not answer
/// it while it is held.
class AnswerButton final : public QPushButton {
public:
    AnswerButton(const QString& text, QWidget* parent, bool isDestructive = false)
        : QPushButton(text, parent)
        , m_isDestructive(isDestructive)
    {}

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QStyleOptionButton option;
        initStyleOption(&option);
        if (m_isDestructive)
            option.palette.setColor(QPalette::ButtonText,
                                    AppTheme::legible(AppTheme::red(palette()), palette()));
        QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (!KeyRepeat::isRepeat(*event))
            QPushButton::keyPressEvent(event);
    }

private:
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

QuestionBox* makeBox(QWidget* context, Tone tone, const QString& heading, const QString& message)
{
    if (tone == Tone::warning)
        return new QuestionBox(u"exclamationmark.triangle.fill"_s, &AppTheme::orange, heading, message,
                               context->window());
    return new QuestionBox(u"info.circle.fill"_s, &AppTheme::accent, heading, message, context->window());
}

QPushButton* addButton(QuestionBox* box, QPushButton* button, QDialogButtonBox::ButtonRole role,
                       const QString& objectName)
{
    button->setObjectName(objectName);
    box->addButton(button, role);
    return button;
}

} // namespace

void makeSheet(QDialog* dialog)
{
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint);
}

QDialog* ask(QWidget* context, const Question& question, std::function<void()> confirmed)
{
    QuestionBox* box = makeBox(context, Tone::warning, question.title, question.message);
    QPushButton* cancel =
        addButton(box, new AnswerButton(u"Cancel"_s, box), QDialogButtonBox::RejectRole, u"cancelButton"_s);
    QPushButton* action = addButton(box, new AnswerButton(question.action, box, question.isDestructive),
                                    QDialogButtonBox::AcceptRole, u"confirmButton"_s);
    box->setDefaultButton(question.isDestructive ? cancel : action);
    QObject::connect(action, &QAbstractButton::clicked, context, std::move(confirmed));
    openOver(box, question.objectName, question.title);
    return box;
}

QDialog* tell(QWidget* context, Tone tone, const QString& objectName, const QString& title,
              const QString& message)
{
    QuestionBox* box = makeBox(context, tone, title, message);
    box->setDefaultButton(
        addButton(box, new AnswerButton(u"OK"_s, box), QDialogButtonBox::AcceptRole, u"okButton"_s));
    openOver(box, objectName, title);
    return box;
}

QDialog* askForText(QWidget* context, const TextQuestion& question, std::function<bool(QString)> confirmed)
{
    auto* dialog = new QDialog(context->window());
    auto* title = new QLabel(question.title, dialog);
    setRelativeFont(title, 1, QFont::DemiBold);
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
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    QObject::connect(buttons, &QDialogButtonBox::accepted, context,
                     [dialog, field, confirmed = std::move(confirmed)] {
                         if (confirmed(field->text()))
                             dialog->accept();
                     });
    openOver(dialog, question.objectName, question.title);
    field->setFocus();
    return dialog;
}

} // namespace orvanlite
