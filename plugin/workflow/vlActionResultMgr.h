// Whether the last meeting action succeeded.
#pragma once

#include "platform/runtime/Object.h"

#include <QVariantMap>

class vlActionResultMgr {
public:
    void setActionResult(bool succeeded) { m_bActionSucceed = succeeded; }
    [[nodiscard]] bool getActionResult() const { return m_bActionSucceed; }
    // True exactly when the answer's "keyVlResult" is "Success".
    void setActionResultData(const QVariantMap &answer);
    // Returns the result that the editor's strip holds; false without a strip.
    [[nodiscard]] bool getActionResultWithCalEventEditorViewCtrl(rt::Object *editor) const;

private:
    bool m_bActionSucceed = false;
};
