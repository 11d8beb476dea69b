// Texts that other programs' windows and the settings file give: identity labels, positions, truth
// values.
#include "base/number_text.h"
#include "fuzz/fuzzing.h"
#include "link/net_remote_reply.h"
#include "link/network_watch.h"
#include "link/sdr_setup.h"

namespace corvane {
namespace {

using fuzzing::Require;

void Check(const std::string& text) {
  for (const char* prefix : {"MCC:", "MNC:", "LA:"}) {
    const std::string number = IdentityNumber(text, prefix);
    const auto value = ParseDecimal<std::int32_t>(number);
    Require(value && *value >= 0 && *value <= 32767, "a label gives a number of 15 bits");
    Require(Decimal(*value) == number, "the number is plain");
  }
  if (const auto place = ParsePosition(text)) {
    const std::string plain = Decimal(place->left) + "," + Decimal(place->top) + "," +
                              Decimal(place->right) + "," + Decimal(place->bottom);
    Require(ParsePosition(plain) == place, "a position reads as what it is written as");
  }
  static_cast<void>(ReadBoolean(text));
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
