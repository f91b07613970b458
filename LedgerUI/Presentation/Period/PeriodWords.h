#pragma once

class WordTable;

/// The texts of periods and of their navigator.
const WordTable& periodWords();
