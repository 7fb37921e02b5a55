// Tables of papers that other programs keep.
#pragma once

#include <optional>
#include <string>

/// One paper of a table.
struct TablePaper {
    std::string name;
    double width = 0.0;   // in `unit`
    double height = 0.0;
    int unit = 2;   // WUnit id: 1 inch, 2 millimetre
};

/// The paper that a line of a table describes: "A4,210,297,mm" (paperspecs of libpaper), "A4 595.276 841.89" (what
/// `paperconf -a -n -s` prints, in points of 1/72 inch), or `*PaperDimension A4/A4: "595 842"` (a printer's PPD file of
/// CUPS, in points). None for another line.
std::optional<TablePaper> ReadPaperLine(const std::string& line);
