#pragma once

#include <string_view>

namespace quillmar {

// The brief heads-up display that confirms a window action ("Left half" with its symbol). Its look and
// timing are the backend's. Main thread.
class LayoutHud {
public:
    virtual ~LayoutHud() = default;

    // `symbol` is a system symbol name ("rectangle.lefthalf.filled").
    virtual void show(std::string_view title, std::string_view symbol) = 0;
};

} // namespace quillmar
