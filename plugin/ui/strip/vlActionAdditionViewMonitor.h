// The strips of all open appointment editors.
#pragma once

#include "plugin/util/sharedObject.h"
#include "plugin/workflow/workflowPorts.h"

#include <QList>
#include <QPointer>
#include <QWidget>

// Objects and windows are matched by their identifiers. Strips are held weakly: a deleted strip is no longer
// found. Lookups search in order of registration and return nullptr without a match. Main thread only.
class vlActionAdditionViewMonitor : public EditorStrips, public SharedObject<vlActionAdditionViewMonitor> {
public:
    // Ignores a widget that is not a strip.
    void addVlActionAdditionViewInstance(QWidget *strip);
    void removeVlActionAdditionViewInstance(QWidget *strip);

    [[nodiscard]] EditorStrip *getVlActionAdditionViewByEditorWinCtrl(const rt::Object *controller) const;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const override;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByECCalendarEvent(const rt::Object *event) const;
    // Searches by the window that contains the strip.
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByWindowIdentify(const QString &identifier) const;
    [[nodiscard]] EditorStrip *getVlActionAdditionViewByWindow(const QWidget *window) const override;
    // Searches by the window of the editor's window controller.
    [[nodiscard]] EditorStrip *
    getVlActionAdditionViewByApptWindowID(const QString &identifier) const override;

private:
    template<typename Matches>
    [[nodiscard]] EditorStrip *first(Matches matches) const;

    QList<QPointer<QWidget>> m_strips; // each an EditorStrip
};
