#pragma once

namespace quillmar {

// A half-open range of pixel rows, [begin, end), counted from the top of a bitmap.
struct RowRange {
    int begin = 0;
    int end = 0;

    int count() const { return end - begin; }
    bool empty() const { return end <= begin; }
    bool operator==(const RowRange&) const = default;
};

} // namespace quillmar
