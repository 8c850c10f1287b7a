# Writes OUTPUT, a source that holds every string table of FOLDER, so that an installed program needs no files.
# Run as a script: cmake -DFOLDER=... -DOUTPUT=... -P EmbedStrings.cmake
file(GLOB tables ${FOLDER}/*.json)
list(SORT tables)
set(entries "")
foreach(table IN LISTS tables)
    get_filename_component(locale ${table} NAME_WE)
    file(READ ${table} json)
    string(APPEND entries "    {\"${locale}\", R\"norvane(${json})norvane\"},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"src/platform/EmbeddedStrings.h\"

namespace norvane {

namespace {

constexpr EmbeddedStrings kStrings[] = {
${entries}};

} // namespace

std::span<const EmbeddedStrings> embeddedStrings() { return kStrings; }

} // namespace norvane
")
