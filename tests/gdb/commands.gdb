# What scripts/check-gdb lets gdb print of program.cpp. Lines of "echo" name what follows.
set width 0
set height 0
set print elements 12
set print frame-info short-location
break Stop
run
up

echo == texts\n
output empty
echo \n
output inPlace
echo \n
output longest
echo \n
output onHeap
echo \n
output special
echo \n

echo == pointers and bags, no registry\n
output none
echo \n
output bag
echo \n
output reference
echo \n
output large
echo \n
output holder
echo \n

echo == values\n
python [print(gdb.parse_and_eval("values")["_M_impl"]["_M_start"][i]) for i in range(9)]
output name
echo \n
output uuid
echo \n
python print("no printer for what is no text:", gdb.default_visualizer(gdb.parse_and_eval("nothing")) is None)

continue
up
echo == with a registry\n
output reference
echo \n
set print qv-names off
output bag
echo \n
echo == end\n
kill
