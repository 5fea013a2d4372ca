// The order of work while a photo is cut: what may be read, coded and taken when.
#include "platform/error.h"
#include "sheets/jpeg_cut_schedule.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include <gmock/gmock.h>

namespace veldara::test {

namespace {

using testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;
using namespace std::chrono_literals;

Bytes bytesOf(const CutJob& job) {
    return {static_cast<std::uint8_t>(job.piece), static_cast<std::uint8_t>(job.rows.first),
            static_cast<std::uint8_t>(job.rows.end)};
}

} // namespace

TEST(JpegCutSchedule, GivesThePartsOfAStripToWorkersAndJoinsThem) {
    JpegCutSchedule schedule({{0, 3}, {2, 5}}, 2, 3);
    EXPECT_EQ(schedule.rowsNeeded(), 5);
    EXPECT_TRUE(schedule.beginStrip(0));
    EXPECT_TRUE(schedule.beginStrip(1));
    EXPECT_TRUE(schedule.beginStrip(2));
    schedule.endReading();
    std::vector<CutJob> jobs(4);
    for (CutJob& job : jobs) {
        job = *schedule.takeJob();
    }
    EXPECT_FALSE(schedule.takeJob());
    EXPECT_FALSE(schedule.waitReady(0ms));
    for (const std::size_t late : {3U, 1U, 2U, 0U}) { // in any order
        schedule.finishJob(jobs[late], bytesOf(jobs[late]));
    }
    EXPECT_TRUE(schedule.waitReady(0ms));
    EXPECT_THAT(schedule.takePiece(), ElementsAre(0, 0, 2, 0, 2, 3));
    EXPECT_THAT(schedule.takePiece(), ElementsAre(1, 2, 4, 1, 4, 5));
}

TEST(JpegCutSchedule, NothingIsCodedBeforeItIsRead) {
    JpegCutSchedule schedule({{0, 2}}, 1, 2);
    ASSERT_TRUE(schedule.beginStrip(0));
    std::thread worker([&] {
        while (const std::optional<CutJob> job = schedule.takeJob()) {
            schedule.finishJob(*job, bytesOf(*job));
        }
    });
    EXPECT_FALSE(schedule.waitReady(1ms));
    EXPECT_TRUE(schedule.beginStrip(1));
    schedule.endReading();
    EXPECT_THAT(schedule.takePiece(), ElementsAre(0, 0, 1, 0, 1, 2));
    worker.join();
}

TEST(JpegCutSchedule, ReadingWaitsUntilTheRingHasRoom) {
    JpegCutSchedule schedule({{0, 3}}, 1, 1);
    std::vector<int> read;
    std::thread reader([&] {
        for (int strip = 0; strip < 3 && schedule.beginStrip(strip); ++strip) {
            read.push_back(strip);
        }
        schedule.endReading();
    });
    for (int strip = 0; strip < 3; ++strip) {
        const std::optional<CutJob> job = schedule.takeJob();
        EXPECT_EQ(job->strip, strip);
        schedule.finishJob(*job, bytesOf(*job));
    }
    reader.join();
    EXPECT_THAT(read, ElementsAre(0, 1, 2));
    EXPECT_EQ(schedule.takePiece().size(), 9U);
}

TEST(JpegCutSchedule, StripsWithoutPiecesArePassed) {
    JpegCutSchedule schedule({{6, 7}}, 2, 1);
    for (int strip = 0; strip < 4; ++strip) {
        EXPECT_TRUE(schedule.beginStrip(strip));
    }
    schedule.endReading();
    const std::optional<CutJob> job = schedule.takeJob();
    EXPECT_EQ(job->strip, 3);
    EXPECT_EQ(job->rows, (McuRows{6, 7}));
}

TEST(JpegCutSchedule, WorkersWaitForTheTakerWhenTheyAreFarAhead) {
    const std::size_t megabyte = std::size_t{1} << 20;
    std::vector<McuRows> pieces(40, McuRows{0, 1});
    JpegCutSchedule schedule(pieces, 1, 1);
    ASSERT_TRUE(schedule.beginStrip(0));
    schedule.endReading();
    std::atomic<int> coded = 0;
    std::thread worker([&] {
        while (const std::optional<CutJob> job = schedule.takeJob()) {
            schedule.finishJob(*job, Bytes(megabyte));
            ++coded;
        }
    });
    int most = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        EXPECT_EQ(schedule.takePiece().size(), megabyte);
        most = std::max(most, coded - static_cast<int>(i));
    }
    worker.join();
    EXPECT_EQ(coded, 40);
    EXPECT_LE(most, 20) << "the first, sixteen more, and the ones in hand";
}

TEST(JpegCutSchedule, ReadsAsFarAsIsWantedBeyondThePieces) {
    JpegCutSchedule schedule({{0, 1}}, 2, 1, 5);
    EXPECT_EQ(schedule.rowsNeeded(), 5);
    ASSERT_TRUE(schedule.beginStrip(0));
    std::thread reader([&] {
        for (int strip = 1; strip < 3; ++strip) {
            EXPECT_TRUE(schedule.beginStrip(strip));
        }
        schedule.endReading();
    });
    const std::optional<CutJob> job = schedule.takeJob();
    ASSERT_TRUE(job);
    EXPECT_FALSE(schedule.waitRead(0ms)) << "the ring is full until its piece is coded";
    schedule.finishJob(*job, bytesOf(*job));
    EXPECT_EQ(schedule.takePiece().size(), 3U);
    while (!schedule.waitRead(1s)) {
    }
    reader.join();
}

TEST(JpegCutSchedule, WhoWaitsForReadingHearsOfAFailure) {
    JpegCutSchedule schedule({{0, 4}}, 1, 1);
    EXPECT_FALSE(schedule.waitRead(0ms));
    schedule.fail(std::make_exception_ptr(Error("torn")));
    EXPECT_THROW(schedule.waitRead(1s), Error);
}

TEST(JpegCutSchedule, AFailureEndsEveryWait) {
    JpegCutSchedule schedule({{0, 4}}, 1, 1);
    ASSERT_TRUE(schedule.beginStrip(0));
    std::thread reader([&] { EXPECT_FALSE(schedule.beginStrip(1)); });
    std::thread taker([&] { EXPECT_THROW(schedule.takePiece(), Error); });
    ASSERT_TRUE(schedule.takeJob());
    std::thread worker([&] { EXPECT_FALSE(schedule.takeJob()); });
    schedule.fail(std::make_exception_ptr(Error("first")));
    schedule.fail(std::make_exception_ptr(Error("second")));
    reader.join();
    taker.join();
    worker.join();
    EXPECT_TRUE(schedule.stopped());
    try {
        schedule.takePiece();
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "first");
    }
}

TEST(JpegCutSchedule, AStopEndsReadingAndCoding) {
    JpegCutSchedule schedule({{0, 4}}, 1, 1);
    ASSERT_TRUE(schedule.beginStrip(0));
    schedule.stop();
    EXPECT_FALSE(schedule.takeJob());
    EXPECT_FALSE(schedule.beginStrip(1));
    EXPECT_TRUE(schedule.stopped());
}

} // namespace veldara::test
