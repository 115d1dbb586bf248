# Sources of src/typed.
list(APPEND QUILL_CORE_SOURCES typed/locale.cpp)
list(APPEND QUILL_CORE_SOURCES typed/types.cpp)
list(APPEND QUILL_CORE_SOURCES typed/numbers.cpp)
list(APPEND QUILL_CORE_SOURCES typed/dates.cpp)
list(APPEND QUILL_CORE_SOURCES typed/format.cpp)
list(APPEND QUILL_CORE_SOURCES typed/keys.cpp)
