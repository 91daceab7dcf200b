// SPDX-License-Identifier: MIT
#pragma once

class SoakStage;

/// Does one thing that a person might do now, which the stage's dice choose and its record notes.
void doSomething(SoakStage &stage);
/// Ends what is open above the window, as a person might: chooses something, or not. For lists and menus whatever the
/// dice say; a dialog gets a file's name or Escape.
void answerOpenAbove(SoakStage &stage);
