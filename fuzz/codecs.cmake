# The picture formats, and the colour profiles inside of them.
add_library(fuzz_pictures STATIC picture_fuzzing.cpp)
target_link_libraries(
  fuzz_pictures
  PUBLIC veldara_image veldara_text
  PRIVATE veldara_options)
target_include_directories(fuzz_pictures PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")

foreach(format jpeg tiff bmp png webp heic avif)
  veldara_fuzz(fuzz_${format} SOURCES fuzz_${format}.cpp USES fuzz_pictures LONGEST 8192)
endforeach()
veldara_fuzz(fuzz_colour_profile SOURCES fuzz_colour_profile.cpp USES veldara_image LONGEST 8192)

# Writes the seeds again: fuzz_codec_seeds fuzz/corpus
find_package(JPEG REQUIRED)
find_package(TIFF REQUIRED)
find_package(GTest REQUIRED)
set(makers "${PROJECT_SOURCE_DIR}/tests/image")
add_executable(fuzz_codec_seeds EXCLUDE_FROM_ALL codec_seeds.cpp "${makers}/files.cpp" "${makers}/jpeg_files.cpp"
                                                 "${makers}/tiff_files.cpp")
target_include_directories(fuzz_codec_seeds PRIVATE "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(
  fuzz_codec_seeds
  PRIVATE veldara_options
          veldara_image
          veldara_text
          TIFF::TIFF
          JPEG::JPEG
          lcms2
          GTest::gtest)
