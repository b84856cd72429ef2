// Replaced by the layer's first source.
