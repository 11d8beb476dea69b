// The files of tools/report/page and the chart library, put inside the program when it is built.
#pragma once

#include <string_view>

namespace corvane::tools {

extern const std::string_view kReportHead;
extern const std::string_view kReportStyle;
extern const std::string_view kReportBody;
extern const std::string_view kReportScript;
extern const std::string_view kReportLibrary;
extern const std::string_view kReportLicence;

}  // namespace corvane::tools
