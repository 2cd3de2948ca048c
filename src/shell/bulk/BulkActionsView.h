#pragma once

#include "model/PluginFormat.h"

#include <QSet>
#include <QWidget>

#include <utility>
#include <vector>

class QLabel;

namespace orvanlite {

struct AudioPlugin;
struct BulkConfirmation;
enum class BulkAction;
class BulkPluginList;
class ChipButton;
class NoticeButton;
class NoticeStrip;
class PluginManagerViewModel;
class PressButton;
class ViewUpdater;

/// The selected plugins, grouped by name, with the bulk actions. Shown by its owner only with a selection.
class BulkActionsView final : public QWidget {
    Q_OBJECT

public:
    BulkActionsView(PluginManagerViewModel& viewModel, BulkConfirmation& confirmation, QWidget* parent);

    /// Height of the list, in logical pixels.
    void setPaneHeight(double height);
    /// Lets the list take all available height, regardless of setPaneHeight().
    void setExpandsFull(bool expands);

    /// Include all wrapped lines above the list at the current width, and the preferred or minimum height of
    /// the list, so that the list and the table shrink before any text is cut off.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// On purpose: with height for width, a layout would use the full height as the minimum.
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* makeActionRow();
    QWidget* makeFormatRow(QWidget* parent);
    QWidget* makeHeaderRow();
    QWidget* makeNotices();
    PressButton* makeButton(const QString& text, const QString& iconKey, QColor (*tint)(const QPalette&),
                            const QString& objectName, QWidget* parent);
    void applyListHeight();

    void render();
    void renderFormats(bool isAnimated);
    void renderHeader();
    void renderNotices();
    [[nodiscard]] bool disablesWavesBundle() const;

    /// Toggles up to ten plugins immediately; asks for confirmation for more.
    void startToggle(BulkAction action);
    void ask(BulkAction action, std::vector<AudioPlugin> plugins);
    void toggleSelected(const QString& name);
    void removeSelected();

    PluginManagerViewModel& m_viewModel;
    BulkConfirmation& m_confirmation;
    double m_paneHeight = 200;
    bool m_expandsFull = false;
    QSet<QString> m_selectedBulkNames; ///< selected in this list; independent of the table's selection
    bool m_isReloadDue = true;
    bool m_isFormatChange = false; ///< animate the next rendering

    std::vector<PressButton*> m_actions;
    std::vector<std::pair<PluginFormat, ChipButton*>> m_formatChips;
    QWidget* m_formatRow = nullptr;
    QLabel* m_count = nullptr;
    QLabel* m_unique = nullptr;
    PressButton* m_remove = nullptr;
    NoticeButton* m_waveShellWarning = nullptr;
    NoticeStrip* m_bundleNotice = nullptr;
    BulkPluginList* m_list = nullptr;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
