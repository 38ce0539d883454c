Store(1, 2)
Store()
Store := 1
Store += 1
Store++
Store--
Store:Go(1)
Store->x := 2
Store[1] := 3
Store = 4
(Store)->x := 5
x := Store + Store(1)
x := o:Store:n + .5 + y.n
Default(1, 2)
Default()
Default := 1
Default += 1
Default++
Default--
Default:Go(1)
Default->x := 2
Default[1] := 3
Default = 4
x := Default + Default(1)
Save(1, 2)
Save()
Save := 1
Save += 1
Save++
Save--
Save:Go(1)
Save->x := 2
Save[1] := 3
Save = 4
x := Save + Save(1)
Restore(1, 2)
Restore()
Restore := 1
Restore += 1
Restore++
Restore--
Restore:Go(1)
Restore->x := 2
Restore[1] := 3
Restore = 4
x := Restore + Restore(1)
Release(1, 2)
Release()
Release := 1
Release += 1
Release++
Release--
Release:Go(1)
Release->x := 2
Release[1] := 3
Release = 4
x := Release + Release(1)
Accept(1, 2)
Accept()
Accept := 1
Accept += 1
Accept++
Accept--
Accept:Go(1)
Accept->x := 2
Accept[1] := 3
Accept = 4
x := Accept + Accept(1)
Input(1, 2)
Input()
Input := 1
Input += 1
Input++
Input--
Input:Go(1)
Input->x := 2
Input[1] := 3
Input = 4
x := Input + Input(1)
Wait(1, 2)
Wait()
Wait := 1
Wait += 1
Wait++
Wait--
Wait:Go(1)
Wait->x := 2
Wait[1] := 3
Wait = 4
x := Wait + Wait(1)
Cls(1, 2)
Cls()
Cls := 1
Cls += 1
Cls++
Cls--
Cls:Go(1)
Cls->x := 2
Cls[1] := 3
Cls = 4
x := Cls + Cls(1)
Clear(1, 2)
Clear()
Clear := 1
Clear += 1
Clear++
Clear--
Clear:Go(1)
Clear->x := 2
Clear[1] := 3
Clear = 4
x := Clear + Clear(1)
Read(1, 2)
Read()
Read := 1
Read += 1
Read++
Read--
Read:Go(1)
Read->x := 2
Read[1] := 3
Read = 4
x := Read + Read(1)
Set(1, 2)
Set()
Set := 1
Set += 1
Set++
Set--
Set:Go(1)
Set->x := 2
Set[1] := 3
Set = 4
x := Set + Set(1)
Append(1, 2)
Append()
Append := 1
Append += 1
Append++
Append--
Append:Go(1)
Append->x := 2
Append[1] := 3
Append = 4
x := Append + Append(1)
Go(1, 2)
Go()
Go := 1
Go += 1
Go++
Go--
Go:Go(1)
Go->x := 2
Go[1] := 3
Go = 4
x := Go + Go(1)
Goto(1, 2)
Goto()
Goto := 1
Goto += 1
Goto++
Goto--
Goto:Go(1)
Goto->x := 2
Goto[1] := 3
Goto = 4
x := Goto + Goto(1)
Skip(1, 2)
Skip()
Skip := 1
Skip += 1
Skip++
Skip--
Skip:Go(1)
Skip->x := 2
Skip[1] := 3
Skip = 4
x := Skip + Skip(1)
Locate(1, 2)
Locate()
Locate := 1
Locate += 1
Locate++
Locate--
Locate:Go(1)
Locate->x := 2
Locate[1] := 3
Locate = 4
x := Locate + Locate(1)
Continue(1, 2)
Continue()
Continue := 1
Continue += 1
Continue++
Continue--
Continue:Go(1)
Continue->x := 2
Continue[1] := 3
Continue = 4
x := Continue + Continue(1)
Delete(1, 2)
Delete()
Delete := 1
Delete += 1
Delete++
Delete--
Delete:Go(1)
Delete->x := 2
Delete[1] := 3
Delete = 4
x := Delete + Delete(1)
Recall(1, 2)
Recall()
Recall := 1
Recall += 1
Recall++
Recall--
Recall:Go(1)
Recall->x := 2
Recall[1] := 3
Recall = 4
x := Recall + Recall(1)
Sum(1, 2)
Sum()
Sum := 1
Sum += 1
Sum++
Sum--
Sum:Go(1)
Sum->x := 2
Sum[1] := 3
Sum = 4
x := Sum + Sum(1)
Count(1, 2)
Count()
Count := 1
Count += 1
Count++
Count--
Count:Go(1)
Count->x := 2
Count[1] := 3
Count = 4
x := Count + Count(1)
Average(1, 2)
Average()
Average := 1
Average += 1
Average++
Average--
Average:Go(1)
Average->x := 2
Average[1] := 3
Average = 4
x := Average + Average(1)
Replace(1, 2)
Replace()
Replace := 1
Replace += 1
Replace++
Replace--
Replace:Go(1)
Replace->x := 2
Replace[1] := 3
Replace = 4
x := Replace + Replace(1)
Index(1, 2)
Index()
Index := 1
Index += 1
Index++
Index--
Index:Go(1)
Index->x := 2
Index[1] := 3
Index = 4
x := Index + Index(1)
Reindex(1, 2)
Reindex()
Reindex := 1
Reindex += 1
Reindex++
Reindex--
Reindex:Go(1)
Reindex->x := 2
Reindex[1] := 3
Reindex = 4
x := Reindex + Reindex(1)
Pack(1, 2)
Pack()
Pack := 1
Pack += 1
Pack++
Pack--
Pack:Go(1)
Pack->x := 2
Pack[1] := 3
Pack = 4
x := Pack + Pack(1)
Zap(1, 2)
Zap()
Zap := 1
Zap += 1
Zap++
Zap--
Zap:Go(1)
Zap->x := 2
Zap[1] := 3
Zap = 4
x := Zap + Zap(1)
Commit(1, 2)
Commit()
Commit := 1
Commit += 1
Commit++
Commit--
Commit:Go(1)
Commit->x := 2
Commit[1] := 3
Commit = 4
x := Commit + Commit(1)
Copy(1, 2)
Copy()
Copy := 1
Copy += 1
Copy++
Copy--
Copy:Go(1)
Copy->x := 2
Copy[1] := 3
Copy = 4
x := Copy + Copy(1)
Unlock(1, 2)
Unlock()
Unlock := 1
Unlock += 1
Unlock++
Unlock--
Unlock:Go(1)
Unlock->x := 2
Unlock[1] := 3
Unlock = 4
x := Unlock + Unlock(1)
Rename(1, 2)
Rename()
Rename := 1
Rename += 1
Rename++
Rename--
Rename:Go(1)
Rename->x := 2
Rename[1] := 3
Rename = 4
x := Rename + Rename(1)
Close(1, 2)
Close()
Close := 1
Close += 1
Close++
Close--
Close:Go(1)
Close->x := 2
Close[1] := 3
Close = 4
x := Close + Close(1)
Quit(1, 2)
Quit()
Quit := 1
Quit += 1
Quit++
Quit--
Quit:Go(1)
Quit->x := 2
Quit[1] := 3
Quit = 4
x := Quit + Quit(1)
