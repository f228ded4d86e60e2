#include "text/record_file.h"

#include <gtest/gtest.h>

#include "test_files.h"
#include "text/runtime_error.h"

namespace tolvane::test {
namespace {

using text::RecordFile;

// A record one byte too long is error 5 and is not written; one of the full width is.
TEST(RecordFile, PutPadsEachRecordToItsWidthOneAfterAnother) {
  TempDir dir;
  RecordFile file(dir / "r.txt", 8);
  file.put("abc");
  file.put("");
  EXPECT_EQ(runTimeErrorOf([&] { file.put("123456789"); }), text::kInvalidProcedureCall);
  file.put("12345678");
  file.close();
  EXPECT_EQ(readFile(dir / "r.txt"), "abc     " + std::string(8, ' ') + "12345678");
}

TEST(RecordFile, GetsByNumberAndInOrderToTheEnd) {
  TempDir dir;
  writeFile(dir / "r.txt", "one  two  three");  // the last record is cut short
  RecordFile file(dir / "r.txt", 5);
  EXPECT_EQ(file.count(), 3u);
  std::string record;
  ASSERT_TRUE(file.get(2, record));
  EXPECT_EQ(record, "two  ");
  ASSERT_TRUE(file.next(record));
  EXPECT_EQ(record, "three");
  EXPECT_TRUE(file.atEnd());
  EXPECT_FALSE(file.next(record));
  EXPECT_EQ(record, "");
  EXPECT_FALSE(file.get(9, record));
}

TEST(RecordFile, ReadsSeeWhatWasPutBeforeAndAcrossBufferEdges) {
  TempDir dir;
  RecordFile file(dir / "r.txt", 50);
  for (int i = 0; i < 60000; ++i) file.put("v " + std::to_string(i));  // several buffers
  std::string record;
  ASSERT_TRUE(file.get(1, record));
  EXPECT_EQ(record, "v 0" + std::string(47, ' '));
  ASSERT_TRUE(file.get(59999, record));
  EXPECT_EQ(record.substr(0, 8), "v 59998 ");
  file.seek(2);
  file.put("changed");  // a put over a cached record
  ASSERT_TRUE(file.get(2, record));
  EXPECT_EQ(record.substr(0, 8), "changed ");
  file.close();
  EXPECT_EQ(std::filesystem::file_size(dir / "r.txt"), 60000u * 50);
}

TEST(RecordFile, AFolderThatCannotBeWrittenIsARunTimeError) {
  EXPECT_NE(runTimeErrorOf([] { RecordFile("/nonexistent-folder/r.txt", 10); }), 0);
}

}  // namespace
}  // namespace tolvane::test
