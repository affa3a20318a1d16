#include "plugin/ui/dialogs/vlProgressUIMgr.h"

void vlProgressUIMgr::showCommunication(QWidget *window) {
    if (m_showProgressWindow)
        return;
    m_showProgressWindow = true;
    m_controller.domodalSheet(window);
}

void vlProgressUIMgr::closeCommunication() {
    if (!m_showProgressWindow)
        return;
    m_controller.abortDomodal();
    m_showProgressWindow = false;
}
