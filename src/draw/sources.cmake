# Sources of src/draw.
