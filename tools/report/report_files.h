// The files of tools/report/page, put inside the program when it is built.
#pragma once

#include <string_view>

namespace corvane::tools {

extern const std::string_view kReportHead;
extern const std::string_view kReportStyle;
extern const std::string_view kReportBody;
extern const std::string_view kReportScript;

}  // namespace corvane::tools
