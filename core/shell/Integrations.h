#pragma once

namespace quillmar {

// Outside integrations started once at launch (port). The base starts none.
class Integrations {
public:
    virtual ~Integrations() = default;

    virtual void start() { }
};

} // namespace quillmar
