#pragma once

/// Lets posted events have their effect: texts, then layouts, then the layouts that these ask for.
void settle();
