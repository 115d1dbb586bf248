# Sources of src/draw.
list(APPEND QUILL_CORE_SOURCES draw/dibparse.cpp)
list(APPEND QUILL_WIN_SOURCES draw/draw.cpp draw/image.cpp)
