#pragma once

class WordTable;

/// The texts of the company menu, and of joining a company or applying for one while signed in.
const WordTable& companyAccessWords();
