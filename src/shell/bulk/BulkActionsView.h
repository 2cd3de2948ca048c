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

/// All that the user has picked, folded by name, and what can be done to it. Its owner shows it only while something
/// is picked.
class BulkActionsView final : public QWidget {
    Q_OBJECT

public:
    BulkActionsView(PluginManagerViewModel& viewModel, BulkConfirmation& confirmation, QWidget* parent);

    /// The height of the region with the rows, in logical pixels.
    void setPaneHeight(double height);
    /// The rows take all the height that there is, whatever the pane's height.
    void setExpandsFull(bool expands);

    /// With all lines that the rows above the list wrap into at the present width, and the list at its asked height, or
    /// at its least: so the list gives way, and the table, before any text does.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// On purpose not: a layout would take the whole height for the least one then.
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

    /// Switches at once up to ten plugins; asks for more.
    void startToggle(BulkAction action);
    void ask(BulkAction action, std::vector<AudioPlugin> plugins);
    void toggleMark(const QString& name);
    void removeMarked();

    PluginManagerViewModel& m_viewModel;
    BulkConfirmation& m_confirmation;
    double m_paneHeight = 200;
    bool m_expandsFull = false;
    QSet<QString> m_selectedBulkNames; ///< marked in here; not the table's selection
    bool m_isReloadDue = true;
    bool m_isFormatChange = false; ///< the next rendering shows a whole format switched

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
