// The live strips of all open appointment editors.
#pragma once

#include "plugin/util/sharedObject.h"
#include "plugin/workflow/workflowPorts.h"

#include <QList>
#include <QPointer>
#include <QWidget>

// Objects and windows are matched by their identifiers. Strips are held weakly: one that dies is no longer
// found. Lookups go in order of registration and answer nullptr when there is no match. Main thread only.
class vlActionAdditionViewMonitor : public EditorStrips, public SharedObject<vlActionAdditionViewMonitor> {
public:
    // A widget that is no strip is ignored; a strip that is there already stays once.
    void addVlActionAdditionViewInstance(QWidget *strip);
    void removeVlActionAdditionViewInstance(QWidget *strip);

    [[nodiscard]] EditorStrip *getVlActionAdditionViewByEditorWinCtrl(const rt::Object *controller) const;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const override;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByECCalendarEvent(const rt::Object *event) const;
    // By the window that the strip is in.
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByWindowIdentify(const QString &identifier) const;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByWindow(const QWidget *window) const override;
    // By the window that the editor's window controller names.
    [[nodiscard]] EditorStrip *
    getVlActionAdditionViewByApptWindowID(const QString &identifier) const override;

private:
    template<typename Matches>
    [[nodiscard]] EditorStrip *first(Matches matches) const;

    QList<QPointer<QWidget>> m_strips; // each an EditorStrip
};
