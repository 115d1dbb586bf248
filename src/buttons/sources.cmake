# Sources of src/buttons.
