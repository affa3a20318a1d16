// How links are made of addresses, told slowly: one walk over the whole text for each address.
#pragma once

#include <QString>

[[nodiscard]] QString linkedByWalking(const QString &text);
