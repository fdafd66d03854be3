#pragma once

#include "ExtendDialog/ExtendDialog.h"

#include <QVector>

#include <functional>

// Dialogs of plugins. GUI thread only.

/// Puts content into a dialog of the application and fits the dialog to it, but makes it no larger than the screen.
/// @param content   its minimum size is kept; the dialog owns it from now on
/// @param preferred size of the content if it needs no more and the screen is large enough
void fillDialog(ExtendDialog* dialog, QWidget* content, const QSize& preferred = {});

/// Makes a dialog as high as its content of a fixed width has become, after texts and fields of it have changed. Does nothing
/// before fillDialog().
void fitToContent(ExtendDialog* dialog);

/// Lets the user resize a dialog, whatever frame it has. Call it after fillDialog().
/// @param dialog of the kind enWidgetNormal
void makeResizable(ExtendDialog* dialog);

/// Shows a dialog in front of the other windows and gives it the focus. A tile becomes a window again.
void bringToFront(ExtendDialog* dialog);

/// A question to the user. Identifiers of this plugin's strings.
struct Question
{
    const char* title;
    const char* text;
    QVector<const char*> answers; ///< up to three; the last one is the default and what Escape chooses
};

/// Shows a question. Unlike CommonUtils::ShowMessage(), it does not wait for the answer, so the plugin may be
/// unloaded while the question is shown.
/// @param window   owns the dialog and takes no input until it is closed
/// @param receiver its deletion cancels the delivery, not the question
/// @param onAnswer receives the index of the answer; not called if the dialog is closed without one
/// @return deletes itself when it is closed; to withdraw the question, delete it
ExtendDialog* ask(const Question& question, QWidget* window, QObject* receiver,
                  const std::function<void(int answer)>& onAnswer);
