FUNCTIONS: dict[str, tuple[str, str, tuple[tuple[str, str, str], ...], str]]
CONSTANTS: dict[str, int]
