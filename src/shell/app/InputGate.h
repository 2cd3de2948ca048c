#pragma once

#include "model/Observable.h"

#include <QObject>

namespace orvanlite {

/// Keeps the user's input from all windows while it is closed, so that nothing can be started a second time. The
/// windows go on painting and look as before: disabling them would grey them, move the focus and be announced by a
/// screen reader. Closing the window and quitting still work.
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
