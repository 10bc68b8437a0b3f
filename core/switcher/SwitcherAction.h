#pragma once

namespace quillmar {

// What the action keys do to the selected card: "w" closes its window, "q" quits its application.
enum class SwitcherAction { close, quit };

} // namespace quillmar
