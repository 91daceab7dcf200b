// SPDX-License-Identifier: MIT
#pragma once

class SoakStage;

/// Opens and closes one device after the other, with its panel, that many times. False when one does not open or close,
/// or the heap grows by more than 1 MB.
bool openAndClose(SoakStage &stage, int cycles);
