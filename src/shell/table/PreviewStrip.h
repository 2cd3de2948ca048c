#pragma once

#include <QWidget>

class QButtonGroup;

namespace orvanlite {

class ElidedLabel;
class PressButton;
class ProfilePreview;
class ViewUpdater;

/// The strip above the table during a preview: the name of the profile, tabs for parts of it, and a button
/// that closes the preview.
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
