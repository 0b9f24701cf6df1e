# Hatch patterns: name, angle in degrees, spacing in millimetres.
ANSI31   45  3.175
STEEL    45  1.5
BRICK     0  6
GRID      0  10
