# Sources of src/container.
list(APPEND QUILL_CORE_SOURCES container/hllist.cpp)
