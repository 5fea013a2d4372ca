# Turns a file into a C++ source with its bytes: cmake -D INPUT=... -D OUTPUT=... -P embed_file.cmake
# The bytes are packed eight to a number, which compiles many times faster than one by one. Every
# system that is built for stores numbers with the low byte first.
file(READ "${INPUT}" hex HEX)
file(SIZE "${INPUT}" size)
math(EXPR padding "(8 - ${size} % 8) % 8")
string(REPEAT "00" ${padding} zeros)
string(APPEND hex "${zeros}")
string(REGEX REPLACE "(..)(..)(..)(..)(..)(..)(..)(..)" "0x\\8\\7\\6\\5\\4\\3\\2\\1,\n" words "${hex}")
file(
  WRITE "${OUTPUT}"
  "#include \"platform/image/built_in_font.h\"\n\nnamespace veldara {\n\nnamespace {\n\n"
  "alignas(8) constexpr unsigned long long bytes[] = {\n${words}};\n\n} // namespace\n\n"
  "std::span<const std::uint8_t> builtInFont() {\n"
  "    return {reinterpret_cast<const std::uint8_t*>(bytes), ${size}};\n}\n\n} // namespace veldara\n")
