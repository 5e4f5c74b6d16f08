#pragma once

class QKeyEvent;

namespace desktop {

// The classic key code of a key (vbKeyEscape 27, vbKeyDown 40, letters as capitals ...),
// 0 for a key the classic toolkit has no code for.
int classicKeyCode(const QKeyEvent& event);
// Shift 1, Ctrl 2, Alt 4.
int classicShift(const QKeyEvent& event);

}  // namespace desktop
