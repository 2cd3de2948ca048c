#include "shell/sidebar/ManufacturerList.h"

#include "model/TextOrder.h"
#include "operations/PluginManagerViewModel.h"
#include "platform/Workspace.h"
#include "shell/sidebar/ManufacturerTable.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ManufacturerWebsites.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kGreatestListHeight = 200;
constexpr int kIconSize = 13;
constexpr double kCornerRadius = 7;

/// The background of the field, with its focus ring.
class SearchBackground final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        liquidGlassCard(painter, rect(), kCornerRadius, palette());
        const auto* field = findChild<QLineEdit*>();
        if (!field || !field->hasFocus())
            return;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(AppTheme::withOpacity(AppTheme::accent(palette()), 0.7), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCornerRadius, kCornerRadius);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            update();
        return QWidget::eventFilter(watched, event);
    }
};

} // namespace

ManufacturerList::ManufacturerList(PluginManagerViewModel& viewModel, platform::Workspace& workspace,
                                   QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"manufacturerList"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(AppTheme::kSpace1);
    column->addWidget(makeSearchRow());
    m_table = new ManufacturerTable(kGreatestListHeight, this);
    column->addWidget(m_table);
    m_empty = new TintedLabel(u"No manufacturers found"_s, &AppTheme::secondary, this);
    m_empty->setObjectName(u"noManufacturersLabel"_s);
    m_empty->setMargin(AppTheme::kSpace2);
    m_empty->setWordWrap(true);
    column->addWidget(m_empty);

    connect(m_table, &ManufacturerTable::nameActivated, this, &ManufacturerList::manufacturerClicked);
    connect(m_table, &ManufacturerTable::linkActivated, this,
            [&workspace](const QString& name) { workspace.open(manufacturerWebsiteURL(name)); });
    m_updates->watch(viewModel.allManufacturers, viewModel.selectedManufacturers,
                     viewModel.manufacturerSearchText);
    render();
}

QWidget* ManufacturerList::makeSearchRow()
{
    auto* ground = new SearchBackground(this);
    auto* icon = new TintedLabel({}, &AppTheme::secondary, ground);
    icon->setIcon(u"magnifyingglass"_s, kIconSize);
    m_field = new QLineEdit(ground);
    m_field->setObjectName(u"manufacturerSearchField"_s);
    m_field->setAccessibleName(u"Filter manufacturers"_s);
    m_field->setPlaceholderText(u"Filter manufacturers…"_s);
    m_field->setFrame(false);
    // Sets only this role: the others keep following the application's palette.
    QPalette seeThrough;
    seeThrough.setBrush(QPalette::Base, Qt::transparent);
    m_field->setPalette(seeThrough);
    m_field->installEventFilter(ground);
    m_clear =
        makeIconButton(u"xmark.circle.fill"_s, u"Clear search"_s, u"clearManufacturerSearchButton"_s, ground);

    auto* row = new QHBoxLayout(ground);
    row->setContentsMargins(AppTheme::kSpace2, AppTheme::kSpace1 / 2, AppTheme::kSpace1 / 2,
                            AppTheme::kSpace1 / 2);
    row->setSpacing(AppTheme::kSpace1);
    row->addWidget(icon);
    row->addWidget(m_field, 1);
    row->addWidget(m_clear);
    // The row must not grow when the button appears.
    const auto fit = [this, ground] {
        ground->setMinimumHeight(m_clear->sizeHint().height() + AppTheme::kSpace1);
    };
    fit();
    onFontChange(ground, fit);

    connect(m_field, &QLineEdit::textChanged, this, // assistive technology does not edit
            [this](const QString& text) { m_viewModel.manufacturerSearchText = text; });
    connect(m_clear, &QAbstractButton::clicked, this, [this] {
        m_viewModel.manufacturerSearchText.clear();
        m_field->setFocus();
    });
    return ground;
}

void ManufacturerList::render()
{
    const QString& search = *m_viewModel.manufacturerSearchText;
    if (m_field->text() != search) {
        const QSignalBlocker quiet(m_field);
        m_field->setText(search);
    }
    m_clear->setVisible(!search.isEmpty());
    QStringList names = *m_viewModel.allManufacturers;
    if (!search.isEmpty())
        names.removeIf([&search](const QString& name) { return !localizedContains(name, search); });
    m_table->setManufacturers(names, *m_viewModel.selectedManufacturers);
    m_table->setVisible(!names.isEmpty());
    m_empty->setVisible(names.isEmpty());
}

} // namespace orvanlite
