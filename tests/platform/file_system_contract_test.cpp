#include "platform/error.h"
#include "platform/running_system.h"

#include <algorithm>

namespace veldara::test {
namespace {

class TheFileSystem : public OnTheRunningSystem {
  protected:
    std::unique_ptr<FileSystemObject> object = system.fileSystem().create();

    void write(const std::string& path, const std::vector<std::string>& lines) {
        const std::unique_ptr<TextWriter> writer = object->createTextFile(path);
        for (const std::string& line : lines) {
            writer->writeLine(line);
        }
        writer->close();
    }
    std::vector<std::string> read(const std::string& path) {
        std::vector<std::string> lines;
        const std::unique_ptr<TextReader> reader = object->openTextFile(path);
        while (!reader->atEndOfStream()) {
            lines.push_back(reader->readLine());
        }
        return lines;
    }
    std::vector<std::string> sortedFiles(const std::string& path) {
        std::vector<std::string> names = object->files(path);
        std::sort(names.begin(), names.end());
        return names;
    }
};

using Lines = std::vector<std::string>;

TEST_F(TheFileSystem, ListsFilesAndNotFolders) {
    folder.addFile("b.jpg");
    folder.addFile("a.TIF");
    folder.addFolder("c.jpg");
    folder.addFile("c.jpg/inside.jpg");
    EXPECT_EQ(sortedFiles(folder.text()), (Lines{"a.TIF", "b.jpg"}));
}

TEST_F(TheFileSystem, ListsNamesOfEveryAlphabet) {
    const std::string name = "Gr\xC3\xBC\xC3\x9F"
                             "e \xE7\x85\xA7\xE7\x89\x87.jpg";
    folder.addFile(name, "x");
    EXPECT_EQ(object->files(folder.text()), Lines{name});
    EXPECT_TRUE(object->fileExists(folder / name));
}

TEST_F(TheFileSystem, ListsAnEmptyFolderAsEmpty) {
    EXPECT_EQ(object->files(folder.text()), Lines{});
}

TEST_F(TheFileSystem, SaysWhyAFolderCannotBeListed) {
    try {
        object->files(folder / "missing");
        ADD_FAILURE() << "a missing folder was listed";
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("missing"), std::string::npos) << error.what();
    }
    const std::string file = folder.addFile("file");
    EXPECT_THROW(object->files(file), Error);
    EXPECT_THROW(object->files(""), Error);
}

TEST_F(TheFileSystem, TellsFilesFromFolders) {
    const std::string file = folder.addFile("photo.jpg");
    const std::string below = folder.addFolder("below");
    EXPECT_TRUE(object->fileExists(file));
    EXPECT_FALSE(object->folderExists(file));
    EXPECT_TRUE(object->folderExists(below));
    EXPECT_FALSE(object->fileExists(below));
    EXPECT_TRUE(object->folderExists(below + system.drives().separator()));
    EXPECT_FALSE(object->fileExists(folder / "missing"));
    EXPECT_FALSE(object->folderExists(folder / "missing"));
    EXPECT_FALSE(object->fileExists(""));
    EXPECT_FALSE(object->folderExists(""));
}

TEST_F(TheFileSystem, CreatesOneFolderAtATime) {
    const std::string name = folder / "poster_images \xC3\xA9";
    object->createFolder(name);
    EXPECT_TRUE(object->folderExists(name));
    EXPECT_THROW(object->createFolder(folder / "a" + system.drives().separator() + "b"), Error);
    EXPECT_FALSE(object->folderExists(folder / "a"));
}

TEST_F(TheFileSystem, RefusesToCreateAFolderWhereSomethingStands) {
    const std::string below = folder.addFolder("below");
    const std::string file = folder.addFile("file");
    EXPECT_THROW(object->createFolder(below), Error);
    EXPECT_THROW(object->createFolder(file), Error);
    EXPECT_THROW(object->createFolder(file + system.drives().separator() + "x"), Error);
    EXPECT_THROW(object->createFolder(""), Error);
    EXPECT_THROW(object->createFolder(folder / std::string(400, 'n')), Error);
}

TEST_F(TheFileSystem, KnowsTheFreeSpaceOfADrive) {
    EXPECT_GT(object->freeSpace(system.drives().driveOf(folder.text())), 0U);
}

TEST_F(TheFileSystem, KnowsNoFreeSpaceOfADriveThatIsNotThere) {
    EXPECT_THROW(object->freeSpace("?"), Error);
    EXPECT_THROW(object->freeSpace(""), Error);
}

TEST_F(TheFileSystem, WritesLinesThatItReadsAgain) {
    const std::string file = folder / "profiles";
    const Lines lines = {"default\t00,00,00,00,", "",
                         "Gr\xC3\xBC\xC3\x9F"
                         "e\t01,02,03,04,",
                         " end "};
    write(file, lines);
    EXPECT_EQ(read(file), lines);
}

TEST_F(TheFileSystem, EndsLinesWithCarriageReturnAndLineFeed) {
    write(folder / "profiles", {"one", "two"});
    EXPECT_EQ(folder.content("profiles"), "one\r\ntwo\r\n");
}

TEST_F(TheFileSystem, WritesAFileWithoutLines) {
    write(folder / "empty", {});
    EXPECT_TRUE(object->fileExists(folder / "empty"));
    EXPECT_EQ(folder.content("empty"), "");
    EXPECT_EQ(read(folder / "empty"), Lines{});
}

TEST_F(TheFileSystem, ReplacesAFileOnlyWhenTheNewOneIsWhole) {
    const std::string file = folder.addFile("profiles", "old\r\n");
    const std::unique_ptr<TextWriter> writer = object->createTextFile(file);
    writer->writeLine("new");
    EXPECT_EQ(folder.content("profiles"), "old\r\n");
    writer->close();
    EXPECT_EQ(folder.content("profiles"), "new\r\n");
    EXPECT_EQ(object->files(folder.text()), Lines{"profiles"});
}

TEST_F(TheFileSystem, KeepsTheOldFileWhenTheWriterIsDropped) {
    const std::string file = folder.addFile("profiles", "old\r\n");
    object->createTextFile(file)->writeLine("new");
    EXPECT_EQ(folder.content("profiles"), "old\r\n");
    object->createTextFile(folder / "never")->writeLine("new");
    EXPECT_EQ(object->files(folder.text()), Lines{"profiles"}); // and nothing half-made either
}

TEST_F(TheFileSystem, ReadsLinesEndedEitherWayAndALastOneWithoutEnd) {
    folder.addFile("mixed", "one\r\ntwo\nthree");
    EXPECT_EQ(read(folder / "mixed"), (Lines{"one", "two", "three"}));
}

TEST_F(TheFileSystem, ReadsLongLinesWhole) {
    const std::string line(100'000, 'x');
    folder.addFile("long", line + "\r\nend\r\n");
    EXPECT_EQ(read(folder / "long"), (Lines{line, "end"}));
}

TEST_F(TheFileSystem, HasNoLineBehindTheLast) {
    folder.addFile("one", "line\r\n");
    const std::unique_ptr<TextReader> reader = object->openTextFile(folder / "one");
    reader->readLine();
    EXPECT_TRUE(reader->atEndOfStream());
    EXPECT_THROW(reader->readLine(), Error);
}

TEST_F(TheFileSystem, SaysThatATextFileCannotBeOpenedOrCreated) {
    const std::string below = folder.addFolder("below");
    EXPECT_THROW(object->openTextFile(folder / "missing"), Error);
    EXPECT_THROW(object->openTextFile(below), Error);
    EXPECT_THROW(object->createTextFile(below)->close(), Error);
    EXPECT_THROW(object->createTextFile(folder / "no" + system.drives().separator() + "x")->close(),
                 Error);
    EXPECT_EQ(object->files(folder.text()), Lines{});
}

TEST_F(TheFileSystem, GivesUpOnAFileThatIsNoText) {
    // Eight million bytes without a line end: an error, or lines of a bounded length, but an end.
    folder.addFile("binary", std::string(8'000'000, '\x01'));
    const std::unique_ptr<TextReader> reader = object->openTextFile(folder / "binary");
    std::size_t longest = 0;
    try {
        while (!reader->atEndOfStream()) {
            longest = std::max(longest, reader->readLine().size());
        }
    } catch (const Error&) {
        longest = std::max<std::size_t>(longest, 1);
    }
    EXPECT_GT(longest, 0U);
    EXPECT_LT(longest, 5'000'000U);
}

TEST_F(TheFileSystem, WritesIntoTheProgramsOwnFolder) {
    const std::string file = system.profileFolder() + system.drives().separator() + "contract_test";
    write(file, {"line"});
    EXPECT_EQ(read(file), Lines{"line"});
    std::filesystem::remove(pathOf(file));
}

TEST_F(TheFileSystem, MakesAsManyObjectsAsAreAskedFor) {
    const std::unique_ptr<FileSystemObject> other = system.fileSystem().create();
    EXPECT_NE(other, nullptr);
    EXPECT_NE(other, object);
}

} // namespace
} // namespace veldara::test
