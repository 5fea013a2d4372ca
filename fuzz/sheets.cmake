# Cutting pieces out of JPEG photos.
veldara_fuzz(
  fuzz_jpeg_cutter
  SOURCES
  fuzz_jpeg_cutter.cpp
  "${PROJECT_SOURCE_DIR}/tests/sheets/jpeg_agreement.cpp"
  USES
  veldara_sheets
  veldara_image
  veldara_text
  LONGEST
  8192)
target_include_directories(fuzz_jpeg_cutter PRIVATE "${PROJECT_SOURCE_DIR}/tests")
