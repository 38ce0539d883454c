<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt" sourcelanguage="en">
<context>
    <name>Preprocessor</name>
    <message>
        <source>A block for a value is empty</source>
        <translation>Um bloco de valor está vazio</translation>
    </message>
    <message>
        <source>A block is not closed</source>
        <translation>Um bloco não está fechado</translation>
    </message>
    <message>
        <source>A comment is not closed</source>
        <translation>Um comentário não está fechado</translation>
    </message>
    <message>
        <source>A directive needs a line of its own</source>
        <translation>Uma diretiva precisa de uma linha própria</translation>
    </message>
    <message>
        <source>A string is not closed</source>
        <translation>Uma cadeia de caracteres não está fechada</translation>
    </message>
    <message>
        <source>A page cannot begin with a conditional directive</source>
        <translation>Uma página não pode começar com uma diretiva condicional</translation>
    </message>
    <message>
        <source>A page is one function and cannot hold another</source>
        <translation>Uma página é uma função e não pode conter outra</translation>
    </message>
    <message>
        <source>KOREL</source>
        <translation>KOREL</translation>
    </message>
    <message>
        <source>Preprocessor</source>
        <translation>Pré-processador</translation>
    </message>
    <message>
        <source>Preprocessor: </source>
        <translation>Pré-processador: </translation>
    </message>
    <message>
        <source>Preprocessor: Cannot copy</source>
        <translation>Pré-processador: Não foi possível copiar</translation>
    </message>
    <message>
        <source>Preprocessor: source line TOO BIG - file</source>
        <translation>Pré-processador: linha de fonte GRANDE DEMAIS - arquivo</translation>
    </message>
    <message>
        <source>Precompilation of file</source>
        <translation>Pré-compilação do arquivo</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>concluída</translation>
    </message>
    <message>
        <source>with error</source>
        <translation>com erro</translation>
    </message>
    <message>
        <source>Exitecode equal to</source>
        <translation>Código de saída igual a</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erro</translation>
    </message>
    <message>
        <source>Error creating</source>
        <translation>Erro ao criar</translation>
    </message>
    <message>
        <source>Error creating out file</source>
        <translation>Erro ao criar o arquivo de saída</translation>
    </message>
    <message>
        <source>File not found</source>
        <translation>Arquivo não encontrado</translation>
    </message>
    <message>
        <source>Could not execute</source>
        <translation>Não foi possível executar</translation>
    </message>
    <message>
        <source>The converter failed</source>
        <translation>O conversor falhou</translation>
    </message>
    <message>
        <source>Memory Allocation Failure</source>
        <translation>Falha de alocação de memória</translation>
    </message>
    <message>
        <source>and</source>
        <translation>e</translation>
    </message>
    <message>
        <source>are the same file.</source>
        <translation>são o mesmo arquivo.</translation>
    </message>
    <message>
        <source>at line</source>
        <translation>na linha</translation>
    </message>
    <message>
        <source>in file</source>
        <translation>no arquivo</translation>
    </message>
    <message>
        <source>line</source>
        <translation>linha</translation>
    </message>
    <message>
        <source>to</source>
        <translation>para</translation>
    </message>
    <message>
        <source>unknown failure</source>
        <translation>falha desconhecida</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Build</translation>
    </message>
    <message>
        <source>Released under the MIT licence</source>
        <translation>Distribuído sob a licença MIT</translation>
    </message>
    <message>
        <source>The krpre authors</source>
        <translation>Os autores do krpre</translation>
    </message>
    <message>
        <source>[TRACE] Renaming files</source>
        <translation>[TRACE] Renomeando arquivos</translation>
    </message>
    <message>
        <source>[TRACE] adding include paths</source>
        <translation>[TRACE] acrescentando diretórios de inclusão</translation>
    </message>
    <message>
        <source>[TRACE] copying</source>
        <translation>[TRACE] copiando</translation>
    </message>
    <message>
        <source>[TRACE] creating file</source>
        <translation>[TRACE] criando o arquivo</translation>
    </message>
    <message>
        <source>[TRACE] generated lines</source>
        <translation>[TRACE] linhas geradas</translation>
    </message>
    <message>
        <source>[TRACE] pre-processor error msg</source>
        <translation>[TRACE] mensagem de erro do pré-processador</translation>
    </message>
    <message>
        <source>[TRACE] preprocessing</source>
        <translation>[TRACE] pré-processando</translation>
    </message>
    <message>
        <source>tTranslate </source>
        <translation>tTranslate </translation>
    </message>
    <message>
        <source>xCommand </source>
        <translation>xCommand </translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Aviso</translation>
    </message>
    <message>
        <source>note:</source>
        <translation>nota:</translation>
    </message>
    <message>
        <source>opened by %1, line %2</source>
        <translation>aberto por %1, linha %2</translation>
    </message>
    <message>
        <source>still open at the end of the file</source>
        <translation>ainda aberto no fim do arquivo</translation>
    </message>
    <message>
        <source>still open where a function begins, line %1</source>
        <translation>ainda aberto onde começa uma função, linha %1</translation>
    </message>
    <message>
        <source>the first function begins in line %1</source>
        <translation>a primeira função começa na linha %1</translation>
    </message>
    <message>
        <source>its function begins in line %1</source>
        <translation>a função dela começa na linha %1</translation>
    </message>
    <message>
        <source>only sources of the extended language have it</source>
        <translation>só fontes da linguagem estendida a têm</translation>
    </message>
    <message>
        <source>no control structure is open</source>
        <translation>nenhuma estrutura de controle está aberta</translation>
    </message>
    <message>
        <source>it has an Else already</source>
        <translation>já tem um Else</translation>
    </message>
    <message>
        <source>searched in: %1</source>
        <translation>procurado em: %1</translation>
    </message>
    <message>
        <source>upper and lower case differ in %1</source>
        <translation>maiúsculas e minúsculas diferem em %1</translation>
    </message>
    <message>
        <source>did you mean %1?</source>
        <translation>quis dizer %1?</translation>
    </message>
    <message>
        <source>add the directory of the shipped headers to the include directories</source>
        <translation>acrescente o diretório dos headers fornecidos aos diretórios de inclusão</translation>
    </message>
    <message>
        <source>a directive stands at the beginning of its line</source>
        <translation>uma diretiva fica no início da sua linha</translation>
    </message>
    <message>
        <source>expected %1</source>
        <translation>esperado: %1</translation>
    </message>
    <message>
        <source>or</source>
        <translation>ou</translation>
    </message>
    <message>
        <source>a word</source>
        <translation>uma palavra</translation>
    </message>
    <message>
        <source>a name</source>
        <translation>um nome</translation>
    </message>
    <message>
        <source>a name in quotes</source>
        <translation>um nome entre aspas</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>um número</translation>
    </message>
    <message>
        <source>the end of the line</source>
        <translation>o fim da linha</translation>
    </message>
    <message>
        <source>a pattern begins with a word</source>
        <translation>um padrão começa com uma palavra</translation>
    </message>
    <message>
        <source>expected ']' for the '[' in column %1</source>
        <translation>esperado: ']' para o '[' na coluna %1</translation>
    </message>
    <message>
        <source>the ']' in column %1 has no '['</source>
        <translation>o ']' na coluna %1 não tem '['</translation>
    </message>
    <message>
        <source>Cannot read the source</source>
        <translation>Não é possível ler a fonte</translation>
    </message>
    <message>
        <source>The source is too big</source>
        <translation>A fonte é grande demais</translation>
    </message>
    <message>
        <source>The converted source is too big</source>
        <translation>A fonte convertida é grande demais</translation>
    </message>
    <message>
        <source>The output would take the source's place</source>
        <translation>A saída tomaria o lugar da fonte</translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation>não é um arquivo comum</translation>
    </message>
    <message>
        <source>in the result of %1 %2 the '%3' has no partner</source>
        <translation>no resultado de %1 %2, '%3' não tem par</translation>
    </message>
    <message>
        <source>the '%1' has no partner</source>
        <translation>'%1' não tem par</translation>
    </message>
    <message>
        <source>no rule takes this %1 statement</source>
        <translation>nenhuma regra aceita esta instrução %1</translation>
    </message>
    <message>
        <source>correct the statement so that a rule takes it whole</source>
        <translation>corrija a instrução para que uma regra a aceite por inteiro</translation>
    </message>
    <message>
        <source>%1 is used above its #define</source>
        <translation>%1 é usado acima do seu #define</translation>
    </message>
    <message>
        <source>move the #define up: it holds from its own line on</source>
        <translation>mova o #define para cima: ele vale a partir da sua própria linha</translation>
    </message>
    <message>
        <source>%1 is not replaced: the #define is spelt %2</source>
        <translation>%1 não é substituído: o #define se escreve %2</translation>
    </message>
    <message>
        <source>names of defines are case-sensitive: use the same spelling in both places</source>
        <translation>nomes de #define diferenciam maiúsculas de minúsculas: use a mesma grafia nos dois lugares</translation>
    </message>
    <message>
        <source>%1 is not replaced: arguments given: %2, expected: %3</source>
        <translation>%1 não é substituído: argumentos dados: %2, esperados: %3</translation>
    </message>
    <message>
        <source>give the call as many arguments as its #define has parameters</source>
        <translation>passe tantos argumentos quantos parâmetros o #define tem</translation>
    </message>
    <message>
        <source>nothing stands between %1 and %2</source>
        <translation>não há nada entre %1 e %2</translation>
    </message>
    <message>
        <source>write the comma or the operator that is missing, or correct what a rule has taken whole</source>
        <translation>escreva a vírgula ou o operador que falta, ou corrija o que uma regra tomou por inteiro</translation>
    </message>
    <message>
        <source>%1 is no directive</source>
        <translation>%1 não é uma diretiva</translation>
    </message>
    <message>
        <source>the line is taken for a statement; docs/directives.md lists the directives</source>
        <translation>a linha é tratada como instrução; docs/directives.md lista as diretivas</translation>
    </message>
    <message>
        <source>no blank may stand behind the #: write %1</source>
        <translation>não pode haver espaço depois do #: escreva %1</translation>
    </message>
    <message>
        <source>%1 loses bytes and becomes %2</source>
        <translation>%1 perde bytes e passa a ser %2</translation>
    </message>
    <message>
        <source>use ASCII letters only outside of strings and comments</source>
        <translation>use apenas letras ASCII fora de strings e comentários</translation>
    </message>
    <message>
        <source>this #error is reached, and has no effect: %1</source>
        <translation>este #error é alcançado e não tem efeito: %1</translation>
    </message>
    <message>
        <source>remove the #error, or the condition under which it is reached</source>
        <translation>remova o #error, ou a condição em que ele é alcançado</translation>
    </message>
    <message>
        <source>#undef has no effect on %1</source>
        <translation>#undef não tem efeito sobre %1</translation>
    </message>
    <message>
        <source>a #define holds up to the end of the source, or up to the next #define of its name</source>
        <translation>um #define vale até o fim do fonte, ou até o próximo #define do mesmo nome</translation>
    </message>
    <message>
        <source>it stays defined</source>
        <translation>o nome continua definido</translation>
    </message>
    <message>
        <source>it is not defined here</source>
        <translation>o nome não está definido aqui</translation>
    </message>
    <message>
        <source>%1 is no marker of embedded SQL</source>
        <translation>%1 não é um marcador de SQL embutido</translation>
    </message>
    <message>
        <source>there are Exp, NotDel, NoParser, Order, Table, Temp-Table and xFilial</source>
        <translation>existem Exp, NotDel, NoParser, Order, Table, Temp-Table e xFilial</translation>
    </message>
    <message>
        <source>defined here</source>
        <translation>definido aqui</translation>
    </message>
    <message>
        <source>this rule got farthest, and ends before %1</source>
        <translation>esta regra chegou mais longe, e termina antes de %1</translation>
    </message>
    <message>
        <source>this rule got farthest, and wants %1 where %2 stands</source>
        <translation>esta regra chegou mais longe, e exige %1 onde está %2</translation>
    </message>
    <message>
        <source>this rule got farthest, and wants %1 behind the statement</source>
        <translation>esta regra chegou mais longe, e exige %1 depois da instrução</translation>
    </message>
    <message>
        <source>%1 differs in case from the name of the file, %2</source>
        <translation>%1 difere em maiúsculas e minúsculas do nome do arquivo, %2</translation>
    </message>
    <message>
        <source>write the name as the file is called</source>
        <translation>escreva o nome como o arquivo se chama</translation>
    </message>
    <message>
        <source>%1 is not read: %2 was included under that name</source>
        <translation>%1 não é lido: %2 foi incluído com esse nome</translation>
    </message>
    <message>
        <source>give the files names that differ in more than upper and lower case</source>
        <translation>dê aos arquivos nomes que difiram em mais do que maiúsculas e minúsculas</translation>
    </message>
    <message>
        <source>nothing of %1 is used</source>
        <translation>nada de %1 é usado</translation>
    </message>
    <message>
        <source>remove the #include</source>
        <translation>remova o #include</translation>
    </message>
    <message>
        <source>%1 has been included as %2 and is read twice</source>
        <translation>%1 já foi incluído como %2 e é lido duas vezes</translation>
    </message>
    <message>
        <source>include a file by one name everywhere</source>
        <translation>inclua um arquivo sempre pelo mesmo nome</translation>
    </message>
    <message>
        <source>read here before</source>
        <translation>lido aqui antes</translation>
    </message>
    <message>
        <source>BEGINCONTENT without ENDCONTENT</source>
        <translation>BEGINCONTENT sem ENDCONTENT</translation>
    </message>
    <message>
        <source>add the ENDCONTENT: without it no block of the source is converted</source>
        <translation>acrescente o ENDCONTENT: sem ele nenhum bloco do fonte é convertido</translation>
    </message>
    <message>
        <source>BEGINCONTENT without VAR</source>
        <translation>BEGINCONTENT sem VAR</translation>
    </message>
    <message>
        <source>name the variable that takes the text: BEGINCONTENT VAR name</source>
        <translation>indique a variável que recebe o texto: BEGINCONTENT VAR nome</translation>
    </message>
    <message>
        <source>not told: %1 more of %2</source>
        <translation>não informados: mais %1 de %2</translation>
    </message>
    <message>
        <source>no source uses %1</source>
        <translation>nenhum fonte usa %1</translation>
    </message>
    <message>
        <source>no source uses %2 of %1</source>
        <translation>nenhum fonte usa %2 de %1</translation>
    </message>
    <message>
        <source>the brackets of the result do not match</source>
        <translation>os parênteses do resultado não correspondem</translation>
    </message>
    <message>
        <source>balance them, or switch the warning off where one rule opens what another closes</source>
        <translation>equilibre-os ou desligue o aviso onde uma regra abre o que outra fecha</translation>
    </message>
    <message>
        <source>the pattern has no marker %1</source>
        <translation>o padrão não tem o marcador %1</translation>
    </message>
    <message>
        <source>nothing is written for it: use the name of a marker of the pattern</source>
        <translation>nada é escrito para ele: use o nome de um marcador do padrão</translation>
    </message>
    <message>
        <source>the group of %1 takes words that get lost</source>
        <translation>o grupo de %1 recebe palavras que se perdem</translation>
    </message>
    <message>
        <source>begin the group with a word, or let the marker be a list: &lt;name,...&gt;</source>
        <translation>comece o grupo com uma palavra ou torne o marcador uma lista: &lt;name,...&gt;</translation>
    </message>
    <message>
        <source>%1 gets no parameters</source>
        <translation>%1 não recebe parâmetros</translation>
    </message>
    <message>
        <source>remove the blank in front of the bracket, which is part of the value now</source>
        <translation>remova o espaço antes do parêntese, que agora faz parte do valor</translation>
    </message>
    <message>
        <source>the translation ends in %1, which takes all that can belong to an expression</source>
        <translation>a tradução termina em %1, que recebe tudo o que pode pertencer a uma expressão</translation>
    </message>
    <message>
        <source>end the pattern with a word or a bracket</source>
        <translation>termine o padrão com uma palavra ou um parêntese</translation>
    </message>
    <message>
        <source>nothing is left for what stands behind %1</source>
        <translation>nada resta para o que está depois de %1</translation>
    </message>
    <message>
        <source>a marker &lt;*name*&gt; takes the rest of the statement: put it last</source>
        <translation>um marcador &lt;*name*&gt; recebe o resto da instrução: coloque-o por último</translation>
    </message>
    <message>
        <source>this rule is never used</source>
        <translation>esta regra nunca é usada</translation>
    </message>
    <message>
        <source>remove the rule, or put it behind the other one</source>
        <translation>remova a regra ou coloque-a depois da outra</translation>
    </message>
    <message>
        <source>two rules fit equally well, and the later one is used</source>
        <translation>duas regras servem igualmente bem, e a última é usada</translation>
    </message>
    <message>
        <source>add a word to one of them unless their order is meant</source>
        <translation>acrescente uma palavra a uma delas se a ordem não for intencional</translation>
    </message>
    <message>
        <source>%1 is a word of its own and an abbreviation of %2</source>
        <translation>%1 é uma palavra própria e uma abreviação de %2</translation>
    </message>
    <message>
        <source>let the words differ in their first four letters, or use #xcommand and #xtranslate</source>
        <translation>use palavras que diferem nas quatro primeiras letras, ou #xcommand e #xtranslate</translation>
    </message>
    <message>
        <source>rewriting never ends: %1</source>
        <translation>a reescrita nunca termina: %1</translation>
    </message>
    <message>
        <source>let no result in the circle hold a word that begins a rule of it</source>
        <translation>nenhum resultado do círculo deve conter uma palavra que inicia uma de suas regras</translation>
    </message>
    <message>
        <source>for example, %1 becomes %2</source>
        <translation>por exemplo, %1 torna-se %2</translation>
    </message>
    <message>
        <source>for example: %1</source>
        <translation>por exemplo: %1</translation>
    </message>
    <message>
        <source>this rule is used for all of them</source>
        <translation>esta regra é usada para todas as suas instruções</translation>
    </message>
    <message>
        <source>the other one</source>
        <translation>a outra</translation>
    </message>
    <message>
        <source>the longer word</source>
        <translation>a palavra mais longa</translation>
    </message>
</context>
<context>
    <name>krpre</name>
    <message>
        <source>at</source>
        <translation>em</translation>
    </message>
    <message>
        <source>included from</source>
        <translation>incluído de</translation>
    </message>
    <message>
        <source>in the expansion of</source>
        <translation>na expansão de</translation>
    </message>
    <message>
        <source>more rules</source>
        <translation>regras a mais</translation>
    </message>
    <message>
        <source>a file name with a line break cannot be written to a dependency file</source>
        <translation>um nome de arquivo com quebra de linha não pode ser escrito em um arquivo de dependências</translation>
    </message>
</context>
</TS>
