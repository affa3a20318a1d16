// The window that shows that a request to the meeting client is running.
#pragma once

#include "platform/services/runloop/RunLoop.h"
#include "plugin/link/clientCodes.h"

#include <memory>
#include <optional>

class ProgressWindow;
class QWidget;

// Most answers arrive before anyone could read the window, so it appears only after a delay. Until then the
// user can continue to work. All controllers that show the window at the same time share one. Without its
// interface description it never appears.
class vlProgressWindowController {
public:
    static constexpr double delaySeconds = 0.4;

    // Shows the text for requests of this kind, or a general text without a kind.
    explicit vlProgressWindowController(std::optional<ClientAnswer> kind = {});
    ~vlProgressWindowController();
    vlProgressWindowController(const vlProgressWindowController &) = delete;
    vlProgressWindowController &operator=(const vlProgressWindowController &) = delete;

    // Shows the window after the delay, in an application-modal session.
    // REQUIRES: neither the delay nor the session is running.
    void domodalSheet(QWidget *ignored);
    // Cancels the delay or stops showing the window. The session ends with the last controller that shows the
    // window.
    void abortDomodal();
    [[nodiscard]] QWidget *window() const; // nullptr while this controller does not show it

private:
    void show();

    std::optional<ClientAnswer> m_kind;
    std::weak_ptr<platform::TimerId> m_delay; // expires when the delay has passed
    std::shared_ptr<ProgressWindow> m_window;
};
