# Sources of src/grid.
