# Every text that comes from outside: settings, profiles, numbers, the command line.
add_library(fuzz_texts INTERFACE)
target_include_directories(fuzz_texts INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/tests")

veldara_fuzz(fuzz_number_text SOURCES fuzz_number_text.cpp USES fuzz_texts veldara_text LONGEST 64)
veldara_fuzz(fuzz_paper_line SOURCES fuzz_paper_line.cpp USES fuzz_texts veldara_paper LONGEST 512)
veldara_fuzz(fuzz_profile_line SOURCES fuzz_profile_line.cpp USES fuzz_texts veldara_calibration LONGEST 128)
veldara_fuzz(fuzz_profile_file SOURCES fuzz_profile_file.cpp USES fuzz_texts veldara_calibration veldara_linux)
veldara_fuzz(fuzz_preferences SOURCES fuzz_preferences.cpp USES fuzz_texts veldara_app LONGEST 256)
veldara_fuzz(fuzz_value_file SOURCES fuzz_value_file.cpp USES fuzz_texts veldara_linux)
veldara_fuzz(fuzz_command_line SOURCES fuzz_command_line.cpp USES fuzz_texts veldara_cli LONGEST 512)

# The fakes that the main window comes up on are shared with the tests.
veldara_fuzz(fuzz_start_up SOURCES fuzz_start_up.cpp no_pdf_writer.cpp USES fuzz_texts veldara_app GTest::gtest LONGEST 1024)
