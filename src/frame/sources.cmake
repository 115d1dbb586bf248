# Sources of src/frame.
list(APPEND QUILL_CORE_SOURCES frame/strings.cpp)
