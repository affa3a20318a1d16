// Text literals of the whole project: u"text"_s is a QString whose characters lie in the program, without a
// copy.
#pragma once

#include <QString>

using namespace Qt::StringLiterals;
