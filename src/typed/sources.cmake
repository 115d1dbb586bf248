# Sources of src/typed.
list(APPEND QUILL_CORE_SOURCES typed/locale.cpp)
list(APPEND QUILL_CORE_SOURCES typed/types.cpp)
