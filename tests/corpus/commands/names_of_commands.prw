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
(Default)->x := 5
x := Default + Default(1)
x := o:Default:n + .5 + y.n
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
(Save)->x := 5
x := Save + Save(1)
x := o:Save:n + .5 + y.n
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
(Restore)->x := 5
x := Restore + Restore(1)
x := o:Restore:n + .5 + y.n
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
(Release)->x := 5
x := Release + Release(1)
x := o:Release:n + .5 + y.n
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
(Accept)->x := 5
x := Accept + Accept(1)
x := o:Accept:n + .5 + y.n
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
(Input)->x := 5
x := Input + Input(1)
x := o:Input:n + .5 + y.n
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
(Wait)->x := 5
x := Wait + Wait(1)
x := o:Wait:n + .5 + y.n
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
(Cls)->x := 5
x := Cls + Cls(1)
x := o:Cls:n + .5 + y.n
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
(Clear)->x := 5
x := Clear + Clear(1)
x := o:Clear:n + .5 + y.n
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
(Read)->x := 5
x := Read + Read(1)
x := o:Read:n + .5 + y.n
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
(Set)->x := 5
x := Set + Set(1)
x := o:Set:n + .5 + y.n
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
(Append)->x := 5
x := Append + Append(1)
x := o:Append:n + .5 + y.n
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
(Go)->x := 5
x := Go + Go(1)
x := o:Go:n + .5 + y.n
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
(Goto)->x := 5
x := Goto + Goto(1)
x := o:Goto:n + .5 + y.n
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
(Skip)->x := 5
x := Skip + Skip(1)
x := o:Skip:n + .5 + y.n
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
(Locate)->x := 5
x := Locate + Locate(1)
x := o:Locate:n + .5 + y.n
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
(Continue)->x := 5
x := Continue + Continue(1)
x := o:Continue:n + .5 + y.n
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
(Delete)->x := 5
x := Delete + Delete(1)
x := o:Delete:n + .5 + y.n
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
(Recall)->x := 5
x := Recall + Recall(1)
x := o:Recall:n + .5 + y.n
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
(Sum)->x := 5
x := Sum + Sum(1)
x := o:Sum:n + .5 + y.n
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
(Count)->x := 5
x := Count + Count(1)
x := o:Count:n + .5 + y.n
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
(Average)->x := 5
x := Average + Average(1)
x := o:Average:n + .5 + y.n
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
(Replace)->x := 5
x := Replace + Replace(1)
x := o:Replace:n + .5 + y.n
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
(Index)->x := 5
x := Index + Index(1)
x := o:Index:n + .5 + y.n
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
(Reindex)->x := 5
x := Reindex + Reindex(1)
x := o:Reindex:n + .5 + y.n
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
(Pack)->x := 5
x := Pack + Pack(1)
x := o:Pack:n + .5 + y.n
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
(Zap)->x := 5
x := Zap + Zap(1)
x := o:Zap:n + .5 + y.n
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
(Commit)->x := 5
x := Commit + Commit(1)
x := o:Commit:n + .5 + y.n
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
(Copy)->x := 5
x := Copy + Copy(1)
x := o:Copy:n + .5 + y.n
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
(Unlock)->x := 5
x := Unlock + Unlock(1)
x := o:Unlock:n + .5 + y.n
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
(Rename)->x := 5
x := Rename + Rename(1)
x := o:Rename:n + .5 + y.n
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
(Close)->x := 5
x := Close + Close(1)
x := o:Close:n + .5 + y.n
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
(Quit)->x := 5
x := Quit + Quit(1)
x := o:Quit:n + .5 + y.n
