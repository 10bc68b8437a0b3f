#include "platform/linux/X11KeyTable.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <array>
#include <vector>

#include "core/desktop/KeyCodes.h"
#include "core/hotkeys/Shortcut.h"

namespace quillmar::X11KeyTable {

namespace {

struct Row {
    Keysym keysym;
    std::uint32_t keyCode;
};

// The first row of a key code is the keysym it is registered under; later rows are other keysyms the
// same key reports (shifted letters, the keypad without NumLock, right-hand twins).
constexpr Row rows[] = {
    { XKB_KEY_a, KeyCode::a }, { XKB_KEY_b, KeyCode::b }, { XKB_KEY_c, KeyCode::c }, { XKB_KEY_d, KeyCode::d },
    { XKB_KEY_e, KeyCode::e }, { XKB_KEY_f, KeyCode::f }, { XKB_KEY_g, KeyCode::g }, { XKB_KEY_h, KeyCode::h },
    { XKB_KEY_i, KeyCode::i }, { XKB_KEY_j, KeyCode::j }, { XKB_KEY_k, KeyCode::k }, { XKB_KEY_l, KeyCode::l },
    { XKB_KEY_m, KeyCode::m }, { XKB_KEY_n, KeyCode::n }, { XKB_KEY_o, KeyCode::o }, { XKB_KEY_p, KeyCode::p },
    { XKB_KEY_q, KeyCode::q }, { XKB_KEY_r, KeyCode::r }, { XKB_KEY_s, KeyCode::s }, { XKB_KEY_t, KeyCode::t },
    { XKB_KEY_u, KeyCode::u }, { XKB_KEY_v, KeyCode::v }, { XKB_KEY_w, KeyCode::w }, { XKB_KEY_x, KeyCode::x },
    { XKB_KEY_y, KeyCode::y }, { XKB_KEY_z, KeyCode::z },

    { XKB_KEY_0, KeyCode::digit0 }, { XKB_KEY_1, KeyCode::digit1 }, { XKB_KEY_2, KeyCode::digit2 },
    { XKB_KEY_3, KeyCode::digit3 }, { XKB_KEY_4, KeyCode::digit4 }, { XKB_KEY_5, KeyCode::digit5 },
    { XKB_KEY_6, KeyCode::digit6 }, { XKB_KEY_7, KeyCode::digit7 }, { XKB_KEY_8, KeyCode::digit8 },
    { XKB_KEY_9, KeyCode::digit9 },

    { XKB_KEY_minus, KeyCode::minus }, { XKB_KEY_equal, KeyCode::equal },
    { XKB_KEY_bracketleft, KeyCode::leftBracket }, { XKB_KEY_bracketright, KeyCode::rightBracket },
    { XKB_KEY_backslash, KeyCode::backslash }, { XKB_KEY_semicolon, KeyCode::semicolon },
    { XKB_KEY_apostrophe, KeyCode::quote }, { XKB_KEY_comma, KeyCode::comma },
    { XKB_KEY_period, KeyCode::period }, { XKB_KEY_slash, KeyCode::slash }, { XKB_KEY_grave, KeyCode::grave },

    { XKB_KEY_space, KeyCode::space }, { XKB_KEY_Return, KeyCode::returnKey }, { XKB_KEY_Tab, KeyCode::tab },
    { XKB_KEY_Escape, KeyCode::escape }, { XKB_KEY_BackSpace, KeyCode::deleteBackward },
    { XKB_KEY_Delete, KeyCode::deleteForward }, { XKB_KEY_Insert, KeyCode::help },
    { XKB_KEY_Home, KeyCode::home }, { XKB_KEY_End, KeyCode::end }, { XKB_KEY_Prior, KeyCode::pageUp },
    { XKB_KEY_Next, KeyCode::pageDown }, { XKB_KEY_Left, KeyCode::leftArrow },
    { XKB_KEY_Right, KeyCode::rightArrow }, { XKB_KEY_Up, KeyCode::upArrow }, { XKB_KEY_Down, KeyCode::downArrow },

    { XKB_KEY_F1, KeyCode::f1 }, { XKB_KEY_F2, KeyCode::f2 }, { XKB_KEY_F3, KeyCode::f3 },
    { XKB_KEY_F4, KeyCode::f4 }, { XKB_KEY_F5, KeyCode::f5 }, { XKB_KEY_F6, KeyCode::f6 },
    { XKB_KEY_F7, KeyCode::f7 }, { XKB_KEY_F8, KeyCode::f8 }, { XKB_KEY_F9, KeyCode::f9 },
    { XKB_KEY_F10, KeyCode::f10 }, { XKB_KEY_F11, KeyCode::f11 }, { XKB_KEY_F12, KeyCode::f12 },
    { XKB_KEY_F13, KeyCode::f13 }, { XKB_KEY_F14, KeyCode::f14 }, { XKB_KEY_F15, KeyCode::f15 },
    { XKB_KEY_F16, KeyCode::f16 }, { XKB_KEY_F17, KeyCode::f17 }, { XKB_KEY_F18, KeyCode::f18 },
    { XKB_KEY_F19, KeyCode::f19 }, { XKB_KEY_F20, KeyCode::f20 },

    { XKB_KEY_KP_0, KeyCode::keypad0 }, { XKB_KEY_KP_1, KeyCode::keypad1 }, { XKB_KEY_KP_2, KeyCode::keypad2 },
    { XKB_KEY_KP_3, KeyCode::keypad3 }, { XKB_KEY_KP_4, KeyCode::keypad4 }, { XKB_KEY_KP_5, KeyCode::keypad5 },
    { XKB_KEY_KP_6, KeyCode::keypad6 }, { XKB_KEY_KP_7, KeyCode::keypad7 }, { XKB_KEY_KP_8, KeyCode::keypad8 },
    { XKB_KEY_KP_9, KeyCode::keypad9 }, { XKB_KEY_KP_Decimal, KeyCode::keypadDecimal },
    { XKB_KEY_KP_Multiply, KeyCode::keypadMultiply }, { XKB_KEY_KP_Add, KeyCode::keypadPlus },
    { XKB_KEY_KP_Subtract, KeyCode::keypadMinus }, { XKB_KEY_KP_Divide, KeyCode::keypadDivide },
    { XKB_KEY_KP_Equal, KeyCode::keypadEquals }, { XKB_KEY_KP_Enter, KeyCode::keypadEnter },
    // The Clear key sits where PC keyboards have NumLock.
    { XKB_KEY_Num_Lock, KeyCode::keypadClear },

    { XKB_KEY_Super_L, KeyCode::command }, { XKB_KEY_Super_R, KeyCode::rightCommand },
    { XKB_KEY_Shift_L, KeyCode::shift }, { XKB_KEY_Shift_R, KeyCode::rightShift },
    { XKB_KEY_Caps_Lock, KeyCode::capsLock }, { XKB_KEY_Alt_L, KeyCode::option },
    { XKB_KEY_Alt_R, KeyCode::rightOption }, { XKB_KEY_Control_L, KeyCode::control },
    { XKB_KEY_Control_R, KeyCode::rightControl },

    // Other keysyms of the keys above.
    { XKB_KEY_A, KeyCode::a }, { XKB_KEY_B, KeyCode::b }, { XKB_KEY_C, KeyCode::c }, { XKB_KEY_D, KeyCode::d },
    { XKB_KEY_E, KeyCode::e }, { XKB_KEY_F, KeyCode::f }, { XKB_KEY_G, KeyCode::g }, { XKB_KEY_H, KeyCode::h },
    { XKB_KEY_I, KeyCode::i }, { XKB_KEY_J, KeyCode::j }, { XKB_KEY_K, KeyCode::k }, { XKB_KEY_L, KeyCode::l },
    { XKB_KEY_M, KeyCode::m }, { XKB_KEY_N, KeyCode::n }, { XKB_KEY_O, KeyCode::o }, { XKB_KEY_P, KeyCode::p },
    { XKB_KEY_Q, KeyCode::q }, { XKB_KEY_R, KeyCode::r }, { XKB_KEY_S, KeyCode::s }, { XKB_KEY_T, KeyCode::t },
    { XKB_KEY_U, KeyCode::u }, { XKB_KEY_V, KeyCode::v }, { XKB_KEY_W, KeyCode::w }, { XKB_KEY_X, KeyCode::x },
    { XKB_KEY_Y, KeyCode::y }, { XKB_KEY_Z, KeyCode::z },
    { XKB_KEY_ISO_Left_Tab, KeyCode::tab },
    { XKB_KEY_KP_Insert, KeyCode::keypad0 }, { XKB_KEY_KP_End, KeyCode::keypad1 },
    { XKB_KEY_KP_Down, KeyCode::keypad2 }, { XKB_KEY_KP_Next, KeyCode::keypad3 },
    { XKB_KEY_KP_Left, KeyCode::keypad4 }, { XKB_KEY_KP_Begin, KeyCode::keypad5 },
    { XKB_KEY_KP_Right, KeyCode::keypad6 }, { XKB_KEY_KP_Home, KeyCode::keypad7 },
    { XKB_KEY_KP_Up, KeyCode::keypad8 }, { XKB_KEY_KP_Prior, KeyCode::keypad9 },
    { XKB_KEY_KP_Delete, KeyCode::keypadDecimal },
    { XKB_KEY_Meta_L, KeyCode::option }, { XKB_KEY_Meta_R, KeyCode::rightOption },
    { XKB_KEY_ISO_Level3_Shift, KeyCode::rightOption },
};

// Sorted copies for lookups in both directions, built once.
struct Index {
    std::vector<Row> byKeysym;
    std::vector<Row> byKeyCode;

    Index()
        : byKeysym(std::begin(rows), std::end(rows))
        , byKeyCode(std::begin(rows), std::end(rows))
    {
        std::stable_sort(byKeysym.begin(), byKeysym.end(), [](Row a, Row b) { return a.keysym < b.keysym; });
        // Stable: the first row of each code stays first among equals.
        std::stable_sort(byKeyCode.begin(), byKeyCode.end(), [](Row a, Row b) { return a.keyCode < b.keyCode; });
    }
};

const Index& index()
{
    static const Index instance;
    return instance;
}

} // namespace

std::optional<std::uint32_t> keyCode(Keysym keysym)
{
    const auto& table = index().byKeysym;
    auto found = std::lower_bound(table.begin(), table.end(), keysym, [](Row row, Keysym value) { return row.keysym < value; });
    if (found == table.end() || found->keysym != keysym)
        return std::nullopt;
    return found->keyCode;
}

std::optional<Keysym> keysym(std::uint32_t code)
{
    const auto& table = index().byKeyCode;
    auto found = std::lower_bound(table.begin(), table.end(), code, [](Row row, std::uint32_t value) { return row.keyCode < value; });
    if (found == table.end() || found->keyCode != code)
        return std::nullopt;
    return found->keysym;
}

bool isModifierKey(std::uint32_t code)
{
    return code >= KeyCode::firstModifier && code <= KeyCode::lastModifier;
}

namespace {

struct ModifierPair {
    std::uint16_t x11;
    std::uint32_t carbon;
    std::uint64_t flag;
};

constexpr std::array modifierPairs {
    ModifierPair { X11Modifier::control, Shortcut::controlMask, EventFlags::control },
    ModifierPair { X11Modifier::mod1, Shortcut::optionMask, EventFlags::option },
    ModifierPair { X11Modifier::shift, Shortcut::shiftMask, EventFlags::shift },
    ModifierPair { X11Modifier::mod4, Shortcut::commandMask, EventFlags::command },
};

} // namespace

std::uint32_t carbonModifiers(std::uint16_t state)
{
    std::uint32_t carbon = 0;
    for (auto pair : modifierPairs)
        carbon |= (state & pair.x11) ? pair.carbon : 0;
    return carbon;
}

std::uint16_t x11Modifiers(std::uint32_t carbon)
{
    std::uint16_t state = 0;
    for (auto pair : modifierPairs)
        state = static_cast<std::uint16_t>(state | ((carbon & pair.carbon) ? pair.x11 : 0));
    return state;
}

std::uint64_t eventFlags(std::uint16_t state)
{
    std::uint64_t flags = (state & X11Modifier::lock) ? EventFlags::capsLock : 0;
    for (auto pair : modifierPairs)
        flags |= (state & pair.x11) ? pair.flag : 0;
    return flags;
}

std::uint16_t x11ModifiersFromFlags(std::uint64_t flags)
{
    std::uint16_t state = (flags & EventFlags::capsLock) ? X11Modifier::lock : 0;
    for (auto pair : modifierPairs)
        state = static_cast<std::uint16_t>(state | ((flags & pair.flag) ? pair.x11 : 0));
    return state;
}

} // namespace quillmar::X11KeyTable
