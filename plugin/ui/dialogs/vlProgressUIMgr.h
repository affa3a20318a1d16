// The progress of one request.
#pragma once

#include "plugin/link/linkPorts.h"
#include "plugin/ui/dialogs/vlProgressWindowController.h"
#include "plugin/util/sharedObject.h"

// Each request object has its own instance. The window appears after a delay; showProgressWindow() returns
// true at once.
class vlProgressUIMgr : public RequestProgress, public SharedObject<vlProgressUIMgr> {
public:
    vlProgressUIMgr() = default; // shows a general text
    explicit vlProgressUIMgr(ClientAnswer kind)
        : m_controller(kind) {}
    void showCommunication(QWidget *window) override;
    void closeCommunication() override;
    [[nodiscard]] bool showProgressWindow() const { return m_showProgressWindow; }
    [[nodiscard]] const vlProgressWindowController &progressWindowController() const { return m_controller; }

private:
    bool m_showProgressWindow = false;
    vlProgressWindowController m_controller;
};
