// The web document of the older body editor. The body operations of the editor's adapter are defined beside
// these.
#pragma once

#include "platform/runtime/Object.h"

#include <QString>

class QWidget;

// Host objects, not owned; nullptr when there is none (a host with the newer body editor) or no window.
[[nodiscard]] rt::Object *vlGetDOMDocumentInEventEditorUI(QWidget *window);
// The first element of that tag in the window's document.
[[nodiscard]] rt::Object *vlGetHTMLElementByTagName(QWidget *window, const QString &tagName);
[[nodiscard]] rt::Object *vlGetEmailBodyElementInEventEditorUI(QWidget *window);
