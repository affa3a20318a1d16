// Text literals: u"text"_s is a QString that refers to the literal without copying it.
#pragma once

#include <QString>

using namespace Qt::StringLiterals;
