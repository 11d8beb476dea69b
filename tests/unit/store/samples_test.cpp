// The lists in samples/ are what they claim to be: a start without a complaint.
#include <gtest/gtest.h>

#include "tests/unit/store/golden_files.h"
#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

TEST(Samples, AllAreLoadedWhole) {
  sim::SimFiles files;
  for (const char* name : {"TETRA_mcc.txt", "TETRA_mnc.txt", "TETRA_la.txt", "TETRA_GSSI.txt",
                           "TETRA_SSI.txt", "TETRA_rec_gssi.txt"}) {
    files.Put(kFolder + "\\" + name, TestFile(std::string("../samples/") + name));
  }
  StoreRun run(files);
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.form.lstStatusLog.items(),
            (std::vector<std::string>{
                "Loaded 2 REC GSSIs", "Loaded 1 network labels", "Loaded 2 location area labels",
                "Loaded 1 country code labels", "Loaded 4 saved GSSIs", "Loaded 9 saved SSIs"}));
  EXPECT_TRUE(run.prompts.boxes().empty());
  for (const GssiRecord& group : run.group_table) {
    const std::string key = std::to_string(group.Mcc) + ";" + std::to_string(group.Mnc);
    EXPECT_TRUE(run.names.NetworkLabels.Find(key).has_value()) << key;
    EXPECT_TRUE(group.Label.trimmed().starts_with("Sample ")) << group.Label.trimmed();
  }
  for (const SsiRecord& subscriber : run.subscriber_table) {
    EXPECT_TRUE(
        run.group_table.Find(subscriber.Mcc, subscriber.Mnc, subscriber.LastGssi).has_value())
        << subscriber.Ssi;
    EXPECT_TRUE(subscriber.Label.trimmed().starts_with("Sample ")) << subscriber.Label.trimmed();
  }
}

}  // namespace
}  // namespace corvane
