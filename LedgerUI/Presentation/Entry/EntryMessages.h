#pragma once

#include "LedgerUI/Presentation/Entry/EntryFormState.h"

/// When the form stops saying what was wrong.
namespace EntryMessages {

/// Of a field that is filled in anew.
void forget(EntryEditing& editing, EntryField field);

/// What is said of a field that is changed, and of others in its light, waits until it is judged anew.
void forgetWith(EntryEditing& editing, EntryField field);

/// What was found in the books, which have changed since.
void forgetBooks(EntryEditing& editing);

}
