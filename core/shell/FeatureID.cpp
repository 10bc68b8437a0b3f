#include "core/shell/FeatureID.h"

#include <array>
#include <cassert>

namespace quillmar {

namespace {

constexpr std::array<FeatureInfo, featureCount> featureTable { {
    { "monitor", "System monitor", FeatureCategory::monitor, true,
      "gauge.with.dots.needle.67percent",
      "CPU, memory, disk, network and battery, with optional menu bar readouts." },
    { "keepAwake", "Keep awake", FeatureCategory::display, true,
      "cup.and.heat.waves",
      "Stop your Mac from sleeping, for a while, while an app runs or until you say so." },
    { "quickToggles", "Quick toggles", FeatureCategory::everyday, true,
      "switch.2",
      "Dark mode, hidden files, desktop icons, lock, Trash and more in one click." },
    { "sound", "Sound", FeatureCategory::sound, true,
      "speaker.wave.2",
      "Switch speakers and microphones, and set the volume, without opening Settings." },
    { "timer", "Timer", FeatureCategory::everyday, true,
      "timer",
      "A countdown in the menu bar that tells you when time's up." },
    { "windowLayout", "Window layout", FeatureCategory::windows, true,
      "rectangle.split.2x1",
      "Snap windows to halves, quarters and thirds with shortcuts." },
    { "quitApps", "Quit apps", FeatureCategory::windows, true,
      "xmark.app",
      "See every open app and quit them one by one or all at once." },
    { "clipboard", "Clipboard history", FeatureCategory::clipboard, true,
      "list.clipboard",
      "Search everything you copied, pin favorites and paste again." },
    { "cleanLinks", "Clean links", FeatureCategory::clipboard, true,
      "link.badge.plus",
      "Remove tracking parameters from links you copy." },
    { "plainPaste", "Paste as plain text", FeatureCategory::clipboard, true,
      "doc.plaintext",
      "Paste without formatting using a shortcut." },
    { "colorPicker", "Color picker", FeatureCategory::capture, true,
      "eyedropper",
      "Pick any color on screen and copy it as HEX, RGB, HSL or SwiftUI." },
    { "textGrab", "Copy text from screen", FeatureCategory::capture, true,
      "text.viewfinder",
      "Select part of the screen and copy the text or QR code in it." },
    { "scratchpad", "Scratchpad", FeatureCategory::everyday, true,
      "note.text",
      "Quick notes in tabs that save themselves, with Markdown preview." },
    { "ports", "Port manager", FeatureCategory::apps, true,
      "network",
      "See which apps are listening on network ports and stop them." },
    { "cleaner", "Cleaner", FeatureCategory::apps, true,
      "sparkles",
      "Find caches, logs and build leftovers and move them to the Trash." },
    { "uninstaller", "Uninstaller", FeatureCategory::apps, true,
      "trash",
      "Remove apps together with the files they leave behind." },
    { "homebrew", "Homebrew", FeatureCategory::apps, true,
      "mug",
      "Search, install, update and remove Homebrew tools and apps without a terminal." },
    { "snippets", "Text snippets", FeatureCategory::input, true,
      "text.cursor",
      "Type a short trigger like ;sig and it expands into text." },
    { "quitProtection", "Quit protection", FeatureCategory::input, false,
      "hand.raised",
      "Hold ⌘Q to quit, so a stray press never closes your work." },
    { "mouseScroll", "Mouse scroll direction", FeatureCategory::input, false,
      "computermouse",
      "Reverse scrolling for mice while the trackpad stays natural." },
    { "island", "Dynamic Island", FeatureCategory::everyday, true,
      "rectangle.topthird.inset.filled",
      "Music, timers, calendar, files and quick controls around the camera notch." },
    { "cameraPreview", "Camera preview", FeatureCategory::everyday, true,
      "web.camera",
      "Check how you look before a call in a small floating mirror." },
    { "screenshot", "Screenshots", FeatureCategory::capture, true,
      "camera.viewfinder",
      "Capture an area, window or screen, then mark it up, pin it or share it." },
    { "screenRecording", "Screen recording", FeatureCategory::capture, true,
      "record.circle",
      "Record your screen with system audio and microphone, then trim and export." },
    { "mediaTools", "Media tools", FeatureCategory::capture, true,
      "photo.stack",
      "Compress videos, convert images, add watermarks and make GIFs, all on your Mac." },
    { "commandBar", "Command bar", FeatureCategory::everyday, true,
      "magnifyingglass",
      "Search apps, files, windows, clipboard and menu commands, or do quick math, from one field." },
    { "quickPanel", "Quick panel", FeatureCategory::everyday, true,
      "square.grid.3x3",
      "A floating palette of your favorite tools on one shortcut." },
    { "radialMenu", "Radial menu", FeatureCategory::everyday, false,
      "circle.grid.cross",
      "A wheel of apps, files and actions around your pointer." },
    { "volumeMixer", "Volume mixer", FeatureCategory::sound, true,
      "slider.vertical.3",
      "Set each app's volume, boost quiet ones and send them to different speakers." },
    { "micTools", "Microphone tools", FeatureCategory::sound, true,
      "mic",
      "Pick your preferred microphone, set its level and mute it with a shortcut." },
    { "outputSwitching", "Output switching", FeatureCategory::sound, true,
      "headphones",
      "Switch speakers with a shortcut and lower the volume when headphones disconnect." },
    { "musicBlocker", "Music launch blocker", FeatureCategory::sound, false,
      "music.note",
      "Stop the Music app from opening when you press play." },
    { "appSwitcher", "App switcher", FeatureCategory::windows, true,
      "rectangle.on.rectangle",
      "Switch apps and windows with live previews and search." },
    { "dockPreview", "Dock previews", FeatureCategory::windows, false,
      "dock.rectangle",
      "Hover a Dock icon to see its windows, then switch, close or snap them." },
    { "dockClicks", "Dock clicks", FeatureCategory::windows, false,
      "cursorarrow.click",
      "Click an open app's Dock icon to minimize, hide or cycle its windows." },
    { "maximizeButton", "Maximize with the green button", FeatureCategory::windows, false,
      "arrow.up.left.and.arrow.down.right",
      "The green button fills the screen without making a new full-screen Space." },
    { "dragSnap", "Snap by dragging", FeatureCategory::windows, false,
      "rectangle.split.2x2",
      "Drag a window to a screen edge or corner, or hold a key and drag, to snap it." },
    { "fixedSpaces", "Fixed Space order", FeatureCategory::windows, false,
      "square.stack.3d.down.right",
      "Keep Spaces in the order you set instead of most recently used." },
    { "quitOnClose", "Quit on close", FeatureCategory::windows, false,
      "xmark.square",
      "Quit chosen apps when their last window closes." },
    { "closeProtection", "Close protection", FeatureCategory::input, false,
      "hand.raised.square",
      "Hold ⌘W to close, so a stray press never closes a window." },
    { "smoothScroll", "Smooth scrolling", FeatureCategory::input, false,
      "scroll",
      "Give your mouse wheel a fluid glide, with adjustable speed." },
    { "linearScroll", "Linear scrolling", FeatureCategory::input, false,
      "line.3.horizontal",
      "Every wheel notch scrolls the same distance, however fast you spin." },
    { "pointerAcceleration", "No mouse acceleration", FeatureCategory::input, false,
      "cursorarrow.motionlines",
      "The pointer moves exactly as far as your mouse does." },
    { "focusFollowsMouse", "Focus follows mouse", FeatureCategory::input, false,
      "cursorarrow.rays",
      "Bring the window under the pointer forward after a short pause." },
    { "sidewaysScroll", "Scroll sideways", FeatureCategory::input, false,
      "arrow.left.and.right",
      "Hold a key to turn the mouse wheel into horizontal scrolling." },
    { "sideButtons", "Mouse side buttons", FeatureCategory::input, false,
      "arrowshape.turn.up.backward",
      "Use the Back and Forward buttons on your mouse in Finder, browsers and more." },
    { "mouseButtons", "Mouse button shortcuts", FeatureCategory::input, false,
      "button.programmable",
      "Assign keys and gestures to extra mouse buttons." },
    { "middleClick", "Middle click", FeatureCategory::input, false,
      "hand.tap",
      "Press with three fingers on the trackpad to middle-click." },
    { "clickFilter", "Double-click filter", FeatureCategory::input, false,
      "cursorarrow.click.badge.clock",
      "Ignore accidental double clicks from a worn mouse button." },
    { "keyDebounce", "Key debounce", FeatureCategory::input, false,
      "keyboard.badge.ellipsis",
      "Filter repeated letters from a worn keyboard." },
    { "superKey", "Super key", FeatureCategory::input, false,
      "capslock",
      "Turn Caps Lock into a shortcut key with its own tap action." },
    { "displays", "Displays", FeatureCategory::display, true,
      "sun.max",
      "Set the brightness of every display, including external monitors." },
    { "extraBrightness", "Extra brightness", FeatureCategory::display, false,
      "sun.max.fill",
      "Go past full brightness on XDR displays." },
    { "bluetoothSleep", "Bluetooth on sleep", FeatureCategory::display, false,
      "antenna.radiowaves.left.and.right",
      "Turn Bluetooth off while your Mac sleeps and back on when it wakes." },
    { "fanControl", "Fan control", FeatureCategory::monitor, false,
      "fan",
      "Set fan speeds yourself, by hand or with a temperature curve (beta)." },
    { "speedTest", "Speed test", FeatureCategory::monitor, true,
      "speedometer",
      "Check your internet speed from the panel." },
    { "shelf", "Shelf", FeatureCategory::clipboard, true,
      "tray",
      "Park files, text and links while you drag, then drop them later." },
    { "finderShortcuts", "Finder shortcuts", FeatureCategory::clipboard, false,
      "folder",
      "Cut and paste files with ⌘X and ⌘V, rename with F2, paste images as files." },
    { "diskImageInstaller", "Disk image installer", FeatureCategory::apps, true,
      "externaldrive.badge.plus",
      "Install an app from a disk image in one click and eject it." },
    { "appUpdates", "App updates", FeatureCategory::apps, true,
      "arrow.down.app",
      "See which apps have updates and install them together." },
    { "messagingDownloads", "Messaging downloads", FeatureCategory::apps, true,
      "tray.and.arrow.down",
      "Tidy files saved by chat apps with simple rules." },
    { "cleaningMode", "Cleaning mode", FeatureCategory::everyday, true,
      "bubbles.and.sparkles",
      "Lock the keyboard while you wipe it clean." },
    { "aiAgents", "AI agent usage", FeatureCategory::everyday, true,
      "sparkle",
      "Follow Claude Code, Codex, OpenCode and Copilot usage, limits and live work." },} };

constexpr std::array<FeatureID, featureCount> makeAllFeatures()
{
    std::array<FeatureID, featureCount> features {};
    for (std::size_t index = 0; index < featureCount; ++index)
        features[index] = static_cast<FeatureID>(index);
    return features;
}

constexpr auto allFeatureIDs = makeAllFeatures();

} // namespace

std::span<const FeatureID, featureCount> allFeatures()
{
    return allFeatureIDs;
}

const FeatureInfo& info(FeatureID feature)
{
    auto index = static_cast<std::size_t>(feature);
    assert(index < featureCount);
    return featureTable[index];
}

std::optional<FeatureID> featureFromRawValue(std::string_view raw)
{
    for (auto feature : allFeatureIDs) {
        if (info(feature).rawValue == raw)
            return feature;
    }
    return std::nullopt;
}

} // namespace quillmar
