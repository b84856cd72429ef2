// replaced when this layer is written
