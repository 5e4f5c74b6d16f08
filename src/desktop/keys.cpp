#include "desktop/keys.h"

#include <QKeyEvent>

namespace desktop {

int classicKeyCode(const QKeyEvent& event) {
    const int key = event.key();
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return 'A' + (key - Qt::Key_A);
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        if (event.modifiers() & Qt::KeypadModifier) return 96 + (key - Qt::Key_0);
        return '0' + (key - Qt::Key_0);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16) return 112 + (key - Qt::Key_F1);
    switch (key) {
        case Qt::Key_Backspace:
            return 8;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return 9;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return 13;
        case Qt::Key_Shift:
            return 16;
        case Qt::Key_Control:
            return 17;
        case Qt::Key_Alt:
            return 18;
        case Qt::Key_Pause:
            return 19;
        case Qt::Key_CapsLock:
            return 20;
        case Qt::Key_Escape:
            return 27;
        case Qt::Key_Space:
            return 32;
        case Qt::Key_PageUp:
            return 33;
        case Qt::Key_PageDown:
            return 34;
        case Qt::Key_End:
            return 35;
        case Qt::Key_Home:
            return 36;
        case Qt::Key_Left:
            return 37;
        case Qt::Key_Up:
            return 38;
        case Qt::Key_Right:
            return 39;
        case Qt::Key_Down:
            return 40;
        case Qt::Key_Insert:
            return 45;
        case Qt::Key_Delete:
            return 46;
        case Qt::Key_Asterisk:
            return 106;
        case Qt::Key_Plus:
            return 107;
        case Qt::Key_Minus:
            return 109;
        case Qt::Key_Period:
            return 190;
        case Qt::Key_Slash:
            return 111;
        case Qt::Key_Comma:
            return 188;
        case Qt::Key_Semicolon:
            return 186;
        case Qt::Key_Equal:
            return 187;
        default:
            return 0;
    }
}

int classicShift(const QKeyEvent& event) {
    int shift = 0;
    if (event.modifiers() & Qt::ShiftModifier) shift |= 1;
    if (event.modifiers() & Qt::ControlModifier) shift |= 2;
    if (event.modifiers() & Qt::AltModifier) shift |= 4;
    return shift;
}

}  // namespace desktop
