// The web document of the older body editor. editorBody.cpp also defines the body operations of the editor's
// adapter.
#pragma once

#include "platform/runtime/Object.h"

#include <QString>

class QWidget;

// Host objects, not owned; nullptr if there is none (a host with the newer body editor) or no window.
[[nodiscard]] rt::Object *vlGetDOMDocumentInEventEditorUI(QWidget *window);
// The first element with that tag in the window's document.
[[nodiscard]] rt::Object *vlGetHTMLElementByTagName(QWidget *window, const QString &tagName);
[[nodiscard]] rt::Object *vlGetEmailBodyElementInEventEditorUI(QWidget *window);
