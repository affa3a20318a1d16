// The live strips of all open appointment editors.
#pragma once

#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/workflow/workflowPorts.h"

#include <QList>
#include <QPointer>

// Objects and windows are matched by their identifiers. Strips are held weakly: one that dies is no longer
// found. Lookups go in order of registration and answer nullptr when there is no match. Main thread only.
class vlActionAdditionViewMonitor : public EditorStrips {
public:
    static vlActionAdditionViewMonitor &sharedInstance();

    // Anything that is not a vlActionAdditionView is ignored; a strip that is there already stays once.
    void addVlActionAdditionViewInstance(QWidget *strip);
    void removeVlActionAdditionViewInstance(QWidget *strip);

    [[nodiscard]] vlActionAdditionView *
    getVlActionAdditionViewByEditorWinCtrl(const rt::Object *controller) const override;
    [[nodiscard]] vlActionAdditionView *
    getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const override;
    [[nodiscard]] vlActionAdditionView *
    getVlActionAdditionViewByECCalendarEvent(const rt::Object *event) const;
    // By the window that the strip is in.
    [[nodiscard]] vlActionAdditionView *
    getVlActionAdditionViewByWindowIdentify(const QString &identifier) const;
    [[nodiscard]] vlActionAdditionView *getVlActionAdditionViewByWindow(const QWidget *window) const override;
    // By the window that the editor's window controller names.
    [[nodiscard]] vlActionAdditionView *
    getVlActionAdditionViewByApptWindowID(const QString &identifier) const override;

    void createStrip(QWidget *headerView, const QRectF &frame) override;

private:
    template<typename Matches>
    [[nodiscard]] vlActionAdditionView *first(Matches matches) const;

    QList<QPointer<vlActionAdditionView>> m_strips;
};
