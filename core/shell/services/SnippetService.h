#pragma once

namespace quillmar {

// Snippet expansion as typed (core/snippets' Snippets).
class SnippetService {
public:
    virtual ~SnippetService() = default;

    virtual void setEnabled(bool on) = 0;
};

} // namespace quillmar
