#pragma once

/// Has readers see the grid of periods as a list with an item for each cell. Once for the whole program.
void offerPeriodGridToReaders();
