# Writes the fnet(1) manual page from the tool's own --help texts: the overview from `fnet --help`
# and one section per subcommand from `fnet COMMAND --help`, so that the page never drifts from
# the tool. Run as: cmake -DFNET=<fnet> -DVERSION=<v> -DHELP2MAN=<help2man> -DOUT=<fnet.1> -P
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND "${FNET}" --help OUTPUT_VARIABLE overview COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\n  [a-z]+ " listed "${overview}")

set(include "[COMMANDS]\n")
foreach(entry IN LISTS listed)
    string(STRIP "${entry}" command)
    execute_process(COMMAND "${FNET}" ${command} --help OUTPUT_VARIABLE help
                    COMMAND_ERROR_IS_FATAL ANY)
    # Plain roff: backslashes escaped, no line read as a request.
    string(REPLACE "\\" "\\e" help "${help}")
    string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" help "${help}")
    string(APPEND include ".SS \"fnet ${command}\"\n.nf\n${help}.fi\n")
endforeach()
file(WRITE "${OUT}.h2m" "${include}")

execute_process(
    COMMAND "${HELP2MAN}" --no-info --section=1 --version-string=${VERSION}
            "--name=IRIs, internationalized domain names, addresses and interfaces on the command line"
            "--include=${OUT}.h2m" --output=${OUT} "${FNET}"
    COMMAND_ERROR_IS_FATAL ANY)
