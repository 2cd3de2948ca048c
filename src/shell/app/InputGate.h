#pragma once

#include "model/Observable.h"

#include <QObject>

namespace orvanlite {

/// Blocks user input to all windows while closed, so that no second operation can be started. The windows
/// keep painting and only show a busy cursor: disabling them would grey them out, move the focus and be
/// announced by screen readers. Closing the window and quitting still work. Open menus are closed, as they
/// grab keyboard and pointer, which the password prompt needs.
class InputGate final : public QObject {
public:
    /// Closed while `isClosed` is true.
    explicit InputGate(const Observable<bool>& isClosed, QObject* parent = nullptr);
    ~InputGate() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(bool isClosed);

    bool m_isInstalled = false;
};

} // namespace orvanlite
