// The window that tells that the meeting client is being talked to.
#pragma once

#include "platform/services/runloop/RunLoop.h"
#include "plugin/link/clientCodes.h"

#include <memory>
#include <optional>

class ProgressWindow;
class QWidget;

// Most answers come faster than anybody can read. The window is shown when one has been waited for so long
// that the user begins to wonder; until then nothing keeps the user from going on. All controllers that show
// it at a time share one window. Without its interface description it never shows.
class vlProgressWindowController {
public:
    static constexpr double delaySeconds = 0.4;

    // Tells what is done: the requests of this kind, or nothing more than that something is waited for.
    explicit vlProgressWindowController(std::optional<ClientAnswer> kind = {});
    ~vlProgressWindowController();
    vlProgressWindowController(const vlProgressWindowController &) = delete;
    vlProgressWindowController &operator=(const vlProgressWindowController &) = delete;

    // Has the window shown after the delay, in an application-modal session. Nothing when that is under way.
    void domodalSheet(QWidget *ignored);
    // Takes it back: the session ends with the last controller that shows the window. Nothing without one.
    void abortDomodal();
    [[nodiscard]] QWidget *window() const; // nullptr while this controller does not show it

private:
    void show();

    std::optional<ClientAnswer> m_kind;
    std::weak_ptr<platform::TimerId> m_delay; // expires when it has passed
    std::shared_ptr<ProgressWindow> m_window;
};
