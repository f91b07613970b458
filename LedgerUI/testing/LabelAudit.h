#pragma once

#include <string>
#include <vector>

class QWidget;

/// Every visible label, button and column head below `root` whose text does not fit its place, as
/// "objectName or class: text (needs w x h, has w x h)". Labels that elide on purpose are left out.
std::vector<std::string> auditLabels(QWidget& root);

/// The names of all visible controls that Tab can reach but that have no objectName or no name for readers.
std::vector<std::string> auditControls(QWidget& root);

/// The object names that presses of Tab visit from `first` on, until they come round.
std::vector<std::string> tabOrder(QWidget& first);
