// Placeholder until the layer's first source lands.
