// The window that tells that the meeting client is being talked to.
#pragma once

#include "platform/toolkit/Windows.h"

#include <QObject>
#include <memory>

// Its window is made when it is first shown. Without its interface description it never shows.
class vlProgressWindowController : public QObject {
    Q_OBJECT
public:
    vlProgressWindowController();
    ~vlProgressWindowController() override;

    // Starts an application-modal session for the window. Nothing while any session is running.
    void domodalSheet(QWidget *ignored);
    void abortDomodal(); // ends this window's session; nothing without one
    [[nodiscard]] QWidget *window() const { return m_window.get(); } // nullptr before it is first shown

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void loadWindow();
    void awakeFromNib();
    void initItemsWithLocalizedString();

    std::unique_ptr<QWidget> m_window;
    platform::ModalSession m_modalSession; // dies before its window
};
