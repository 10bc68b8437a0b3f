#include "cli/BatchRunner.h"

#include <istream>
#include <ostream>

namespace quillmar::cli {

void runBatch(std::istream& in, std::ostream& out, const std::function<std::string(std::string_view line)>& answer)
{
    std::string line;
    while (std::getline(in, line)) {
        std::string_view view = line;
        if (!view.empty() && view.back() == '\r')
            view.remove_suffix(1);
        auto reply = answer(view);
        // One line out per line in, whatever the answer holds.
        for (auto& character : reply) {
            if (character == '\n' || character == '\r')
                character = ' ';
        }
        out << reply << '\n';
    }
    out.flush();
}

} // namespace quillmar::cli
