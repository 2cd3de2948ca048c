#pragma once

#include <QWidget>

class QButtonGroup;

namespace orvanlite {

class ElidedLabel;
class PressButton;
class ProfilePreview;
class ViewUpdater;

/// The strip above the table while a profile is under preview: which one it is, the slices of it to look at, and the
/// way out.
class PreviewStrip final : public QWidget {
    Q_OBJECT

public:
    PreviewStrip(ProfilePreview& preview, QWidget* parent);

Q_SIGNALS:
    void closeClicked();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void render();

    ProfilePreview& m_preview;
    ElidedLabel* m_title;
    PressButton* m_close;
    QButtonGroup* m_tabs;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
