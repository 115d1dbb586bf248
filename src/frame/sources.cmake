# Sources of src/frame.
