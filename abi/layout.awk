# Reads what clang++ dumps of records and virtual tables and writes for each class that the dump
# wraps in a Probe: size, alignment and offsets of its fields, in bytes, and by slot the virtual
# functions that it adds to those of its bases.

function without_namespace(text) {
    gsub(/tree_800::/, "", text)
    return text
}

# "int tree_800::Node::GetChild(int) const" as "int GetChild(int) const".
function unqualified(signature,    open, type, name) {
    open = index(signature, "(")
    type = substr(signature, 1, open - 1)
    match(type, /[^ *&]*$/)
    name = substr(type, RSTART)
    type = substr(type, 1, RSTART - 1)
    sub(/.*::/, "", name)
    sub(/^~Probe$/, "destructor", name)
    return type name substr(signature, open)
}

/^Type: (class|struct) tree_800::[A-Za-z0-9_]*$/ { record = $3 }
/^Type: struct Probe</ {
    record = ""
    name = $3
    gsub(/^Probe<|>$/, "", name)
    classes[++numClasses] = name
}
/^  (Size|DataSize|Alignment):/ && record {
    split($1, part, ":")
    layout[record] = layout[record] tolower(part[1]) " " part[2] / 8 ", "
}
/^  FieldOffsets:/ && record {
    gsub(/.*\[|\].*/, "")
    numFields = split($0, offset, /, */)
    layout[record] = layout[record] (numFields ? "fields at" : "no fields")
    for (i = 1; i <= numFields; ++i) layout[record] = layout[record] " " offset[i] / 8
    record = ""
}

/^Vtable for 'Probe'/ { owner = ""; numBases = 0 }
/^$/ { owner = "none" }
/ -- \(.*, [0-9]+\) vtable address --$/ && !owner {
    gsub(/^ *-- \(|, [0-9]+\) vtable address --$/, "")
    if ($0 != "Probe") tableBases[++numBases] = $0
}
/^ *[0-9]+ \| / && owner != "none" {
    slot = $1 - 2  # after the two entries that are no functions
    sub(/^ *[0-9]+ \| /, "")
    if (!owner && /~Probe\(\)/) {
        owner = $0
        gsub(/^Probe<|>::~Probe.*/, "", owner)
        for (i = 1; i <= numBases; ++i) {
            if (tableBases[i] != owner) bases[owner] = bases[owner] " " tableBases[i]
        }
    }
    if (owner) {
        numSlots[owner] = slot + 1
        entry[owner, slot] = unqualified($0)
    }
}

END {
    for (c = 1; c <= numClasses; ++c) {
        class = classes[c]
        print without_namespace(class (bases[class] ? ":" bases[class] : ""))
        print "    " layout[class]
        numBases = split(bases[class], base, " ")
        for (slot = 0; slot < numSlots[class]; ++slot) {
            pure = entry[class, slot]
            sub(/( \[pure\])?$/, " [pure]", pure)
            isNew = 1
            for (b = 1; b <= numBases; ++b) {
                inherited = entry[base[b], slot]
                if (inherited == entry[class, slot] || inherited == pure) isNew = 0
            }
            if (isNew) printf "%6d %s\n", slot, without_namespace(entry[class, slot])
        }
    }
}
