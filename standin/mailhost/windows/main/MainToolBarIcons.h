// Small line drawings for the host's tool-bar.
#pragma once

#include <QIcon>

namespace mailhost {

enum class MainToolBarIcon { NewAppointment, NewMeeting, Previous, Today, Next, Day, Week, Delete };

// In the colours of the program's palette at the time of drawing, so it suits a light and a dark desktop;
// sharp at every size.
[[nodiscard]] QIcon mainToolBarIcon(MainToolBarIcon icon);

} // namespace mailhost
