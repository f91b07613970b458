#pragma once

#include <QFont>

/// The seven sizes of text, from the amount being typed down to chips and axes.
enum class TypeStep { display, figure, title, section, body, small, micro };

namespace TypeScale {

/// The font of a step; title and section are bold, everything else is regular.
QFont font(TypeStep step);

/// The same in bold, for totals.
QFont bold(TypeStep step);

/// The size of a step in points, such that the desktop's text scaling holds.
double points(TypeStep step);

}
