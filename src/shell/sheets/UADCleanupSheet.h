#pragma once

#include "shell/toolkit/Sheet.h"

class QLabel;
class QStackedWidget;

namespace orvanlite {

class PressButton;
class UADCleanupManager;
class UADPluginListModel;
class ViewUpdater;

/// The clean-up of UAD demos: a page for progress, completion, a problem, nothing to do, or the selection.
/// Closing it does not cancel a running clean-up.
class UADCleanupSheet final : public Sheet {
    Q_OBJECT

public:
    UADCleanupSheet(UADCleanupManager& cleanup, QWidget* parent);

    void reject() override;

protected:
    [[nodiscard]] QAbstractButton* mainButton() const override;

private:
    [[nodiscard]] QWidget* makeHeader();
    [[nodiscard]] QWidget* makeWorking();
    [[nodiscard]] QWidget* makeComplete();
    [[nodiscard]] QWidget* makeProblem();
    [[nodiscard]] QWidget* makeEmpty();
    [[nodiscard]] QWidget* makeChoosing();
    [[nodiscard]] QWidget* makeSelectionRow();
    [[nodiscard]] QWidget* makeFooter();
    [[nodiscard]] PressButton* makeButton(const QString& text, const QString& iconKey,
                                          const QString& objectName, QWidget* parent);
    void render();
    void renderChoice();

    UADCleanupManager& m_cleanup;
    QStackedWidget* m_states;
    PressButton* m_close = nullptr;
    PressButton* m_done = nullptr;
    PressButton* m_again = nullptr;
    QLabel* m_disabled = nullptr;
    QLabel* m_problem = nullptr;
    PressButton* m_expiredOnly = nullptr;
    QLabel* m_selected = nullptr;
    UADPluginListModel* m_list = nullptr;
    QLabel* m_counts = nullptr;
    PressButton* m_disable = nullptr;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
