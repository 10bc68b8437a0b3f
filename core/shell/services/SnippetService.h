#pragma once

namespace quillmar {

// Snippet expansion as typed. The base does nothing.
class SnippetService {
public:
    virtual ~SnippetService() = default;

    virtual void setEnabled(bool) { }
};

} // namespace quillmar
