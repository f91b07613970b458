#pragma once

#include <cstddef>
#include <functional>

class QWidget;

/// What a person changed on the pages of a window and has not saved. It goes with the company, the session and the
/// program, and is asked about before a person turns to another page.
namespace UnsavedChanges {

/// On all pages of the main window that `part` belongs to, also through a dialog.
std::size_t count(const QWidget& part);

/// Goes on with `proceed`, at once where nothing is unsaved; else after the person agreed to discard it. `stayed` is
/// called when they do not. The question opens over the window of `part`.
void leave(QWidget& part, std::function<void()> proceed, const std::function<void()>& stayed = {});

/// Asks likewise and discards nothing: for what may still fail, and takes the pages along where it succeeds.
void ask(QWidget& part, std::function<void()> proceed);

}
