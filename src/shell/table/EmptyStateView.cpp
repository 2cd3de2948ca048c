#include "shell/table/EmptyStateView.h"

#include "shell/table/WorkStatusLine.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"

#include <QVBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconSize = 40;
constexpr double kHeadingSize = 1.25;

} // namespace

EmptyStateView::EmptyStateView(const PluginManagerViewModel& viewModel, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(u"emptyState"_s);
    auto* icon = new TintedLabel({}, &AppTheme::secondary, this);
    icon->setIcon(u"music.note.list"_s, kIconSize);
    auto* heading = new QLabel(u"Select a category from the sidebar"_s, this);
    heading->setObjectName(u"emptyStateHeading"_s);
    setRelativeFont(heading, kHeadingSize, QFont::DemiBold);
    auto* caption = new TintedLabel(u"Choose \"All Plugins\" or a specific format to view plugins."_s,
                                    &AppTheme::secondary, this);
    caption->setObjectName(u"emptyStateCaption"_s);
    setRelativeFont(caption, AppTheme::kCaption);
    for (QLabel* text : {heading, static_cast<QLabel*>(caption)}) {
        text->setAlignment(Qt::AlignCenter);
        text->setWordWrap(true);
    }

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(AppTheme::kSpace5, 0, AppTheme::kSpace5, AppTheme::kSpace2);
    column->setSpacing(AppTheme::kSpace2);
    auto* status = new WorkStatusLine(viewModel, this);
    column->addSpacing(status->sizeHint().height() + AppTheme::kSpace2); // keeps the rest centred
    column->addStretch(1);
    column->addWidget(icon, 0, Qt::AlignHCenter);
    column->addSpacing(AppTheme::kSpace1);
    column->addWidget(heading);
    column->addWidget(caption);
    column->addStretch(1);
    column->addWidget(status);
}

} // namespace orvanlite
