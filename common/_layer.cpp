// Placeholder until the product's first source lands.
