# Writes the names in the file NAMES, one a line, as the property list PLIST: an array of strings.
file(STRINGS ${NAMES} names)
list(TRANSFORM names REPLACE "(.+)" "  <string>\\1</string>\n")
string(CONCAT items ${names})
file(WRITE ${PLIST} "<?xml version=\"1.0\" encoding=\"UTF-8\"?>
<plist version=\"1.0\">
<array>
${items}</array>
</plist>
")
