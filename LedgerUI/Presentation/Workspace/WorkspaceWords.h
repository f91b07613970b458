#pragma once

class WordTable;

/// The texts of the signed-in shell: names of pages, side bar, status bar.
const WordTable& workspaceWords();
