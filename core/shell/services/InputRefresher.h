#pragma once

namespace quillmar {

// The input features share one event tap; a switch change asks the input module to rebuild it.
class InputRefresher {
public:
    virtual ~InputRefresher() = default;

    virtual void setNeedsRefresh() = 0;
};

} // namespace quillmar
