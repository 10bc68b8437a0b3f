#pragma once

namespace quillmar {

// Outside integrations started once at launch (port).
class Integrations {
public:
    virtual ~Integrations() = default;

    virtual void start() = 0;
};

} // namespace quillmar
