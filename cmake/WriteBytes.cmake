# Writes the bytes of the file FROM to the file TO as characters that C++ reads: '\x3c','\x21',...
file(READ "${FROM}" bytes HEX)
string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
file(WRITE "${TO}" "${bytes}\n")
