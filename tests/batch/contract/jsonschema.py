"""Checks values against a JSON schema: as much of draft 2020-12 as docs/formats/report.schema.json uses. A keyword that
is not known here is an error of the schema, so that no rule goes unchecked."""

TYPES = {"object": dict, "array": list, "string": str, "boolean": bool, "integer": int, "null": type(None)}
ANNOTATIONS = {"$schema", "$defs", "title", "description"}


class SchemaError(Exception):
    pass


class Schema:
    def __init__(self, schema):
        self.root = schema
        self.met = set()  # names of the definitions that a value has matched

    def faults(self, value, rules=None, path="$"):
        """What is wrong with the value, a text each; nothing when it matches."""
        faults = []
        for keyword, rule in (self.root if rules is None else rules).items():
            if keyword in ANNOTATIONS:
                continue
            check = getattr(self, "check_" + keyword.lstrip("$"), None)
            if check is None:
                raise SchemaError("unknown keyword " + keyword)
            faults += check(value, rule, path, rules)
        return faults

    def check_ref(self, value, name, path, _):
        key = name.removeprefix("#/$defs/")
        faults = self.faults(value, self.root["$defs"][key], path)
        if not faults:
            self.met.add(key)
        return faults

    def check_type(self, value, names, path, _):
        names = [names] if isinstance(names, str) else names
        # In Python a truth value is a number, too.
        fits = any(isinstance(value, TYPES[name]) and not (name == "integer" and isinstance(value, bool))
                   for name in names)
        return [] if fits else [f"{path}: {value!r} is no {' or '.join(names)}"]

    def check_const(self, value, wanted, path, _):
        return [] if same(value, wanted) else [f"{path}: {value!r} is not {wanted!r}"]

    def check_enum(self, value, choices, path, _):
        return [] if any(same(value, choice) for choice in choices) else [f"{path}: {value!r} is none of {choices}"]

    def check_minimum(self, value, least, path, _):
        return [f"{path}: {value} is below {least}"] if isinstance(value, int) and value < least else []

    def check_minLength(self, value, least, path, _):
        return [f"{path}: the text is too short"] if isinstance(value, str) and len(value) < least else []

    def check_minItems(self, value, least, path, _):
        return [f"{path}: too few items"] if isinstance(value, list) and len(value) < least else []

    def check_maxItems(self, value, most, path, _):
        return [f"{path}: too many items"] if isinstance(value, list) and len(value) > most else []

    def check_items(self, value, rules, path, _):
        if not isinstance(value, list):
            return []
        return [fault for at, item in enumerate(value) for fault in self.faults(item, rules, f"{path}[{at}]")]

    def check_required(self, value, keys, path, _):
        return [f"{path}: no key {key}" for key in keys if isinstance(value, dict) and key not in value]

    def check_properties(self, value, properties, path, _):
        if not isinstance(value, dict):
            return []
        return [fault for key, rules in properties.items() if key in value
                for fault in self.faults(value[key], rules, f"{path}.{key}")]

    def check_propertyNames(self, value, rules, path, _):
        return [fault for key in (value if isinstance(value, dict) else ())
                for fault in self.faults(key, rules, f"{path}.{key}")]

    def check_additionalProperties(self, value, rules, path, siblings):
        others = set(value) - set(siblings.get("properties", ())) if isinstance(value, dict) else set()
        if rules is False:
            return [f"{path}: unknown key {key}" for key in sorted(others)]
        return [fault for key in sorted(others) for fault in self.faults(value[key], rules, f"{path}.{key}")]

    def check_oneOf(self, value, choices, path, _):
        faults = [self.faults(value, choice, path) for choice in choices]
        matching = sum(not found for found in faults)
        if matching == 1:
            return []
        nearest = min(faults, key=len)
        return [f"{path}: matches {matching} of {len(choices)} kinds; the nearest: {'; '.join(nearest)}"]


def same(one, other):
    return type(one) is type(other) and one == other
