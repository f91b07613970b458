#pragma once

#include <string>
#include <vector>

class QWidget;

// An audit that meets nothing to look at says so: a screen that was not shown has not passed.

/// Every visible label, button, field prompt and column head below `root` whose text does not fit its place, as
/// "objectName or class: text (needs w x h, has w x h)", and every place that scrolls only up and down and holds what
/// is wider than itself. Labels that elide on purpose are left out.
std::vector<std::string> auditLabels(QWidget& root);

/// The names of all visible controls that Tab can reach but that have no objectName, no name for readers or no role.
std::vector<std::string> auditControls(QWidget& root);

/// The controls below `root` that can be used now and that Tab should visit but does not.
std::vector<std::string> auditTabOrder(QWidget& root);

/// The buttons of the dialog `root` that Return presses from elsewhere without saying so in their tool tip.
std::vector<std::string> auditReturn(QWidget& root);

/// The object names that presses of Tab visit from `first` on, until they come round.
std::vector<std::string> tabOrder(QWidget& first);
