#pragma once

#include "LedgerCore/Domain/Text/WordTable.h"

// Every table of what the screens say, one source file each.

/// What rights are called, and why some cannot be given or taken.
const WordTable& accessWords();

/// What the form of an account says, and how the rules' refusals read in it.
const WordTable& accountFormWords();

/// What the page of accounts says.
const WordTable& accountWords();

/// Texts of the company's audit trail. Kinds stand as "kind." with the command or event, the values of records as
/// "field." with their name on the wire.
const WordTable& auditWords();

/// How the books are kept: their first day, opening balances, switches and colours.
const WordTable& bookkeepingWords();

/// The texts of the forms for capital and dividends.
const WordTable& capitalFormWords();

/// The texts of the page of capital and dividends.
const WordTable& capitalWords();

/// What the tab of categories says.
const WordTable& categoryWords();

/// What every form that sends a command says of the sending itself, beside the shared entry wording.
const WordTable& commandWords();

/// The texts of the company menu, and of joining a company or applying for one while signed in.
const WordTable& companyAccessWords();

/// The texts of the company page: its tabs, the members, the invitations and the profile.
const WordTable& companyWords();

/// The texts of a day that is typed or chosen in a calendar.
const WordTable& dayWords();

/// The words that every dialog and component shares: cancel, close, discard, what a glyph means.
const WordTable& dialogWords();

/// What the entry form and the reversal dialog say of themselves, beside the shared entry wording.
const WordTable& entryFormWords();

/// What is said where files are made from the books.
const WordTable& exportWords();

/// What is said where a person chooses a file or saves one.
const WordTable& fileWords();

/// What is said where older entries are brought in from a file.
const WordTable& importWords();

/// What each key does, and the headings of the list of all keys.
const WordTable& keyWords();

/// The texts of the ledger page.
const WordTable& ledgerWords();

/// The texts of periods and of their navigator.
const WordTable& periodWords();

/// What is said on printed pages, and where they are previewed.
const WordTable& printWords();

/// What the screens say about receipts, beside the wording that they share with the entry form.
const WordTable& receiptWords();

/// The texts of the reports page.
const WordTable& reportWords();

/// The texts of the list of requests that were not confirmed.
const WordTable& requestWords();

/// The texts of the settings.
const WordTable& settingsWords();

/// The texts of the sign-in screen.
const WordTable& signInWords();

/// The texts about templates of entries and what is due by them.
const WordTable& templateWords();

/// The texts of the signed-in shell: names of pages, side bar, status bar.
const WordTable& workspaceWords();
