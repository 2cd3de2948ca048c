#include "shell/table/NoRowsView.h"

#include "shell/toolkit/Announce.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"

#include <QVBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

NoRowsView::NoRowsView(QWidget* parent)
    : QWidget(parent)
    , m_heading(new TintedLabel({}, &AppTheme::secondary, this))
    , m_caption(new TintedLabel({}, &AppTheme::secondary, this))
    , m_clear(new PressButton(u"Clear filters"_s, {}, PressButton::Ground::accent, this))
{
    setObjectName(u"noRowsView"_s);
    m_heading->setObjectName(u"noRowsHeading"_s);
    m_caption->setObjectName(u"noRowsCaption"_s);
    setRelativeFont(m_caption, AppTheme::kCaption);
    for (QLabel* text : {m_heading, m_caption}) {
        text->setAlignment(Qt::AlignCenter);
        text->setWordWrap(true);
    }
    m_clear->setObjectName(u"clearTableFiltersButton"_s);
    connect(m_clear, &QAbstractButton::clicked, this, &NoRowsView::clearClicked);

    auto* column = new QVBoxLayout(this);
    column->setSpacing(AppTheme::kSpace2);
    column->addStretch(1);
    column->addWidget(m_heading);
    column->addWidget(m_caption);
    column->addWidget(m_clear, 0, Qt::AlignHCenter);
    column->addStretch(1);
}

void NoRowsView::setReason(const Reason& reason)
{
    const bool isNews = isHidden() || m_heading->text() != reason.heading;
    m_heading->setText(reason.heading);
    m_caption->setText(reason.caption);
    m_caption->setVisible(!reason.caption.isEmpty());
    m_clear->setVisible(reason.isFiltered);
    setVisible(!reason.heading.isEmpty());
    if (isNews && isVisible())
        announce(m_heading, reason.heading);
}

} // namespace orvanlite
