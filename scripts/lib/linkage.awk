# Prints the lines of C++ sources that define file-local names outside the file's unnamed namespace, and those that begin
# a second such namespace.
FNR == 1 { inside = 0; count = 0 }
/^namespace \{/ { inside = 1; if (++count == 2) report() }
/^} \/\/ namespace$/ { inside = 0 }
!inside && /^(const|constexpr|inline) [^(=]*[ *&][A-Za-z0-9_]+(\[[^]]*\])? ?[={;]/ { report() }
!inside && /^using [A-Za-z0-9_]+ =/ { report() }
function report() { print FILENAME ":" FNR ":" $0 }
