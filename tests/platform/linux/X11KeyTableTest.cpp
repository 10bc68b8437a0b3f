#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "core/desktop/KeyCodes.h"
#include "core/hotkeys/Shortcut.h"
#include "platform/linux/X11KeyTable.h"
#include "platform/linux/X11Session.h"

namespace quillmar {
namespace {

using namespace X11KeyTable;

TEST(X11KeyTable, RoundTripsEveryCodeItKnowsAndNoTwoCodesShareAKeysym)
{
    std::map<Keysym, std::uint32_t> seen;
    int known = 0;
    for (std::uint32_t code = 0; code < 0x80; ++code) {
        auto symbol = keysym(code);
        if (!symbol)
            continue;
        ++known;
        EXPECT_EQ(keyCode(*symbol), code) << "code " << code;
        EXPECT_TRUE(seen.emplace(*symbol, code).second) << "codes " << seen[*symbol] << " and " << code;
    }
    // Letters, digits, punctuation, named keys, F1-F20, the keypad and the modifier keys.
    EXPECT_GE(known, 100);
}

TEST(X11KeyTable, OtherKeysymsOfTheSameKeyMapToItsCode)
{
    const std::pair<Keysym, Keysym> sameKey[] = {
        { XKB_KEY_A, XKB_KEY_a }, { XKB_KEY_Z, XKB_KEY_z }, { XKB_KEY_KP_End, XKB_KEY_KP_1 },
        { XKB_KEY_KP_Delete, XKB_KEY_KP_Decimal }, { XKB_KEY_ISO_Left_Tab, XKB_KEY_Tab },
    };
    for (auto [other, registered] : sameKey) {
        EXPECT_EQ(keyCode(other), keyCode(registered)) << other;
        EXPECT_EQ(keysym(*keyCode(other)), registered) << other;
    }
}

TEST(X11KeyTable, RefusesKeysymsAndCodesOutsideTheVocabulary)
{
    for (Keysym unknown : { Keysym { 0 }, Keysym { XKB_KEY_udiaeresis }, Keysym { XKB_KEY_XF86AudioMute },
             Keysym { XKB_KEY_Cyrillic_ef }, Keysym { 0xFFFFFF } })
        EXPECT_FALSE(keyCode(unknown)) << unknown;
    for (std::uint32_t unknown : { 0x0Au, 0x34u, 0x80u, 0xFFFFu })
        EXPECT_FALSE(keysym(unknown)) << unknown;
}

TEST(X11KeyTable, ModifiersRoundTripAndDropWhatTheOtherSideCannotSay)
{
    for (std::uint32_t carbon = 0; carbon <= Shortcut::modifierMask; carbon += Shortcut::commandMask) {
        auto relevant = carbon & Shortcut::modifierMask;
        EXPECT_EQ(carbonModifiers(x11Modifiers(carbon)), relevant) << carbon;
    }
    // Ctrl+Alt with CapsLock and NumLock (Mod2) lit is ⌃⌥ to a shortcut, but caps lock stays in the flags.
    std::uint16_t state = X11Modifier::control | X11Modifier::mod1 | X11Modifier::lock | (1 << 4);
    EXPECT_EQ(carbonModifiers(state), Shortcut::controlMask | Shortcut::optionMask);
    EXPECT_EQ(eventFlags(state), EventFlags::control | EventFlags::option | EventFlags::capsLock);
    for (std::uint16_t bits = 0; bits < 0x80; ++bits) {
        auto meaningful = static_cast<std::uint16_t>(bits & ~(1 << 4) & ~(1 << 5));
        EXPECT_EQ(x11ModifiersFromFlags(eventFlags(bits)), meaningful) << bits;
    }
    EXPECT_EQ(x11Modifiers(Shortcut::commandMask), X11Modifier::mod4);
}

TEST(DesktopSession, IsToldByTheEnvironment)
{
    struct Row {
        const char* name;
        std::map<std::string, std::string> variables;
        DesktopSession session;
    };
    const Row rows[] = {
        { "an X display", { { "DISPLAY", ":0" } }, DesktopSession::x11 },
        { "Wayland with its X server", { { "DISPLAY", ":1" }, { "WAYLAND_DISPLAY", "wayland-0" } }, DesktopSession::x11 },
        { "Wayland alone", { { "WAYLAND_DISPLAY", "wayland-0" } }, DesktopSession::wayland },
        { "a Wayland session type", { { "XDG_SESSION_TYPE", "wayland" } }, DesktopSession::wayland },
        { "an empty DISPLAY", { { "DISPLAY", "" }, { "XDG_SESSION_TYPE", "tty" } }, DesktopSession::none },
        { "nothing", {}, DesktopSession::none },
    };
    for (const auto& row : rows) {
        auto session = desktopSession([&row](const char* name) -> std::optional<std::string> {
            if (auto found = row.variables.find(name); found != row.variables.end())
                return found->second;
            return std::nullopt;
        });
        EXPECT_EQ(session, row.session) << row.name;
    }
    EXPECT_EQ(sessionRefusal(DesktopSession::wayland, "Global shortcuts"), "Global shortcuts need an X11 session for now.");
    EXPECT_EQ(sessionRefusal(DesktopSession::x11, "Global shortcuts"), "");
}

} // namespace
} // namespace quillmar
